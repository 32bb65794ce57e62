// The short name of MyGradientBoxTop.
import brovik.base

MyGradientBoxTop {}
