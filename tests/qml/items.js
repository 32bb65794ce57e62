.pragma library
.import QtQuick as Quick

// All items below this one that are wanted, in the order of the tree.
function below(parent, wanted) {
    const children = Array.from({length: parent.children.length}, (_, i) => parent.children[i]);
    return children.reduce((found, child) => found.concat(wanted(child) ? [child] : [], below(child, wanted)), []);
}

// To the fraction of a pixel that layouts round.
const rounding = 0.5;

function isInside(item) {
    const room = item.parent.mapToItem(null, item.parent.width, item.parent.height);
    const end = item.mapToItem(null, item.width, item.height);
    return end.x <= room.x + rounding && end.y <= room.y + rounding;
}

// What is too small for this label between it and the page or what scrolls it; nothing if all of its text is in sight.
function tooSmallFor(label, page) {
    if (label.height + rounding < label.contentHeight || label.width + rounding < label.contentWidth) {
        return label;
    }
    for (let item = label; item !== page && !(item.parent instanceof Quick.Flickable); item = item.parent) {
        if (!isInside(item)) {
            return item;
        }
    }
    return null;
}

function topOf(item) {
    return item.mapToItem(null, 0, 0).y;
}

function bottomOf(item) {
    return item.mapToItem(null, 0, item.height).y;
}
