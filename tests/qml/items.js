.pragma library

// All items below this one that are wanted, in the order of the tree.
function below(parent, wanted) {
    const children = Array.from({length: parent.children.length}, (_, i) => parent.children[i]);
    return children.reduce((found, child) => found.concat(wanted(child) ? [child] : [], below(child, wanted)), []);
}
