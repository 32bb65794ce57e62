#pragma once

#include <QByteArray>

/// The stacks of all Python threads, as Python's fault handler writes them.
namespace PythonStacks {

/// Makes write() possible, and has the stacks written to stderr if the process crashes. Interpreter thread,
/// with the GIL.
void arm();

/// The stacks as text; empty if they cannot be had. Any Python thread, with the GIL: no thread goes on
/// meanwhile.
QByteArray text();

/// Writes the stacks to stderr, and nothing if they were not armed or Python has ended. Any thread, without
/// the GIL: for a moment when nobody can have it. The threads may go on meanwhile, and the reading may crash.
void write();

} // namespace PythonStacks
