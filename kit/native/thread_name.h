#pragma once

#include <string>

/// The name that Python's `threading` has for the calling thread; that of the system for one which is not
/// Python's. Runs no Python code and never gives up the GIL. Any thread, with or without the GIL.
std::string pythonThreadName();
