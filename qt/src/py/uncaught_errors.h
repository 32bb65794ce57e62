#pragma once

/// Has what nobody catches in the backend shown like an exception that it forwards: what a thread of
/// `threading` dies of, and what an event loop of asyncio finds without a handler of the backend. What Python
/// can raise nowhere, as in a `__del__`, is logged.
///
/// These are the hooks that Python has for it, `threading.excepthook`, `sys.unraisablehook` and the default
/// handler of asyncio's loops, so the backend may replace them. Each is logged; if it happens over and over,
/// only some are shown. Interpreter thread, with the GIL, before the backend is imported. Throws what Python
/// raises.
void showUncaughtErrors();
