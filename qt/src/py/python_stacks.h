#pragma once

/// The stacks of all Python threads, on stderr, at a moment when nobody can have the GIL.
namespace PythonStacks {

/// Makes write() possible. Interpreter thread, with the GIL.
void arm();

/// Writes the stacks, and nothing if they were not armed or Python has ended. Any thread, without the GIL.
void write();

} // namespace PythonStacks
