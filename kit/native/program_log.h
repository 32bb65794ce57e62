#pragma once

#include <string>
#include <utility>
#include <vector>

/// The log of the host: on stderr in its format, and kept for tests. Any thread, under a mutex of its own.
namespace ProgramLog {

/// Takes all messages of the process from now on.
void install();

/// Level and text of each message since the last clear(), at most the newest thousands. The levels are
/// "debug", "info", "warning" and "critical".
std::vector<std::pair<std::string, std::string>> lines();

void clear();

} // namespace ProgramLog
