#pragma once

#include <Python.h>

/// Makes the built-in modules `brovik` and `_std_redirects` known to the interpreter that is yet to start.
/// Once or more often, before the first start of Python in this process.
void registerBuiltInModules();

/// Makes the module `brovik`. For an interpreter that imports it as a file; the GIL is held. Null with
/// Python's error set if that fails.
PyObject *makeBrovik();
