// The shadow at the lower edge of a scrollable area.
import brovik.base

MyGradientBox {
    atTop: false
}
