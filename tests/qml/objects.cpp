#include "objects.h"

#include "object_hooks.h"

#include <atomic>

namespace {

std::atomic<int> objects = 0;

void added(QObject * /*object*/)
{
    ++objects;
}

void removed(QObject * /*object*/)
{
    --objects;
}

} // namespace

Objects::Objects(QObject *parent)
    : QObject(parent)
{
    watchObjects(&added, &removed);
}

int Objects::count() const
{
    return objects;
}
