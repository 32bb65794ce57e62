#pragma once

/// What a shared object may ask of the host that runs the backend.
class BackendControl
{
public:
    BackendControl() = default;
    BackendControl(const BackendControl &) = delete;
    BackendControl &operator=(const BackendControl &) = delete;
    virtual ~BackendControl() = default;

    /// Stops the interpreter and waits, without a time limit, until its thread has ended. GUI thread.
    /// Returns true if it was running.
    virtual bool stopPython() = 0;
};
