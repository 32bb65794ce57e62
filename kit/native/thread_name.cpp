#include "native/thread_name.h"

#include <Python.h>

#include <QCoreApplication>
#include <QThread>

#include <array>
#include <pthread.h>

namespace {

std::string systemName()
{
    std::array<char, 16> name{};
    pthread_getname_np(pthread_self(), name.data(), name.size());
    return name.data();
}

/// Borrowed; null if there is none. Keys are whole numbers and texts, so no code of Python runs.
PyObject *entry(PyObject *dict, PyObject *key)
{
    return dict != nullptr && PyDict_Check(dict) ? PyDict_GetItemWithError(dict, key) : nullptr;
}

PyObject *entry(PyObject *dict, const char *key)
{
    return dict != nullptr ? PyDict_GetItemString(dict, key) : nullptr;
}

/// `threading._active[ident]._name`, borrowed, without the functions that Python has for that.
PyObject *nameInThreading()
{
    PyObject *threading = entry(PyImport_GetModuleDict(), "threading");
    PyObject *active = threading != nullptr ? entry(PyModule_GetDict(threading), "_active") : nullptr;
    PyObject *ident = PyLong_FromUnsignedLong(PyThread_get_thread_ident());
    PyObject *thread = entry(active, ident);
    Py_DECREF(ident);
    PyObject *attributes = thread != nullptr ? PyObject_GenericGetDict(thread, nullptr) : nullptr;
    PyObject *name = entry(attributes, "_name");
    Py_XDECREF(attributes); // the thread has it, too
    return name;
}

} // namespace

std::string pythonThreadName()
{
    if (PyGILState_Check() == 0) {
        const QCoreApplication *application = QCoreApplication::instance();
        const bool main = application != nullptr && application->thread() == QThread::currentThread();
        return main ? "MainThread" : systemName();
    }
    PyObject *name = nameInThreading();
    const char *text = name != nullptr && PyUnicode_Check(name) ? PyUnicode_AsUTF8(name) : nullptr;
    PyErr_Clear();
    return text != nullptr ? text : systemName();
}
