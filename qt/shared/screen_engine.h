#pragma once

#include <QQmlApplicationEngine>

#include <memory>

/// The engine of all screens; null before they are loaded and after the event loop has ended. Set and reset
/// by the program's entry on the GUI thread.
extern std::unique_ptr<QQmlApplicationEngine> screenEngine;
