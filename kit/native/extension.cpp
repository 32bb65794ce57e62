#include "native/kit_module.h"
#include "src/py/brovik_module.h"

namespace py = pybind11;

/// What Python calls when it imports `brovik` as a file.
extern "C" [[gnu::visibility("default")]] PyObject *PyInit_brovik();

PyObject *PyInit_brovik()
{
    try {
        prepareHost();
        PyObject *made = makeBrovik();
        if (made != nullptr) {
            auto module = py::reinterpret_borrow<py::module_>(made);
            bindKit(module);
        }
        return made;
    }
    PYBIND11_CATCH_INIT_EXCEPTIONS
}
