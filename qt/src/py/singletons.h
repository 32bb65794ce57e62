#pragma once

/// Makes the eleven shared objects on the calling thread, which is theirs from then on: the main thread. To
/// be called before QML or Python can reach them.
void createSingletons();
