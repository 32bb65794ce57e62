#pragma once

#include <QMetaObject>

#include <string>
#include <vector>

// What a class itself declares, in its order, one readable line each.

/// "int progress -> progressChanged()"; ends in "constant" for a constant; begins with "writable" if QML may
/// write it.
std::vector<std::string> declaredProperties(const QMetaObject &meta);
/// "toPy(Auto::AutoEnum,QJSValue)"
std::vector<std::string> declaredSignals(const QMetaObject &meta);
/// "void changePIncRate(double)"; also slots.
std::vector<std::string> declaredInvokables(const QMetaObject &meta);
/// "ToggleAuto = 0"
std::vector<std::string> declaredEnumerators(const QMetaObject &meta, const char *name);
