// The short name of MyGradientBoxBottom.
import brovik.base

MyGradientBoxBottom {}
