#include "brovik/gui/memory_return.h"

#include <QQmlEngine>

#include <malloc.h>

void MemoryReturn::giveBack()
{
    if (QQmlEngine *engine = qmlEngine(this)) {
        engine->collectGarbage();
    }
    malloc_trim(0);
}
