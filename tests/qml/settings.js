.pragma library
.import brovik.settings as Module

// The names of a setting from that of its property, such as "lwSaureMin".

function keyOf(name) {
    return Module.BrovikSettings[name.charAt(0).toUpperCase() + name.slice(1)];
}

function pythonName(name) {
    return name.replace(/[A-Z]/g, letter => "_" + letter.toLowerCase());
}
