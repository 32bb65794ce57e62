#pragma once

/// The signals that ask the program to end: SIGTERM, SIGHUP and SIGINT.
///
/// Their handlers write to a descriptor and do nothing else. Python and the backend have handlers of their
/// own; a claim puts the program's over them. As long as nothing has been opened, all signals are left alone.
namespace EndSignals {

/// Opens the descriptor; from then on claims take effect. GUI thread, once per process. Without descriptors
/// to spare it logs that, and the signals stay as they are.
void open();

/// Where the number of each signal arrives as one byte; -1 as long as nothing has been opened.
int descriptor();

/// The name of one of the signals.
const char *name(int signal);

/// Puts the program's handlers over Python's own.
void claim();

/// Puts them over those that the backend has set meanwhile, and logs that. Quick if there are none.
void claimBack();

/// Lets Python forget its handlers: at its end it would restore what was there before them. Before that end,
/// on the interpreter thread with the GIL.
void claimForGood();

} // namespace EndSignals
