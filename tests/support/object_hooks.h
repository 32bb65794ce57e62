#pragma once

#include <QtGlobal>

class QObject;

// What Qt calls for each object; its private header names the places.
extern Q_DECL_IMPORT quintptr qtHookData[];

/// Has Qt call these for each QObject of the process that comes and that goes, on the thread where it does;
/// null for nothing.
inline void watchObjects(void (*added)(QObject *), void (*removed)(QObject *))
{
    constexpr int addObjectHook = 3;
    constexpr int removeObjectHook = 4;
    qtHookData[addObjectHook] = reinterpret_cast<quintptr>(added);
    qtHookData[removeObjectHook] = reinterpret_cast<quintptr>(removed);
}
