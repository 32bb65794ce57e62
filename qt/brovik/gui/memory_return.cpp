#include "brovik/gui/memory_return.h"

#include "shared/gui_thread.h"

#include <QQmlEngine>

#include <malloc.h>

void MemoryReturn::giveBack()
{
    Q_ASSERT(onGuiThread());
    if (QQmlEngine *engine = qmlEngine(this)) {
        engine->collectGarbage();
    }
    malloc_trim(0);
}
