#pragma once

/// Makes sure that the process may write to its standard streams whatever its parent gave it: closed ones
/// become /dev/null, so that no file opened later takes their place, and a reader that has gone is no reason
/// to end. GUI thread, before anything is opened.
void secureStandardStreams();
