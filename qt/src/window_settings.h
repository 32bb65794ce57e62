#pragma once

/// Reads what the program itself needs of the settings of its window, and exports the directory of their file
/// as BROVIK_CONFIG_DIR. A file that cannot be parsed is put aside, which is shown once the screens are
/// loaded; the defaults hold then. GUI thread, before other threads run and after the identity of the program
/// is set.
void readWindowSettings();
