#include "shared/screen_engine.h"

std::unique_ptr<QQmlApplicationEngine> screenEngine;
