// The shadow at the upper edge of a scrollable area.
import brovik.base

MyGradientBox {
    atTop: true
}
