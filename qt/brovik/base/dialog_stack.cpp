#include "brovik/base/dialog_stack.h"

#include "shared/gui_thread.h"

#include <QVariant>

namespace {

// What dialogs know; popups do without, and those that are gone as well.
const char *const above = "above";

bool is(const QObject *dialog, const char *property)
{
    return dialog != nullptr && dialog->property(property).toBool();
}

void setAbove(QObject *dialog, int count)
{
    if (dialog != nullptr && dialog->metaObject()->indexOfProperty(above) >= 0) {
        dialog->setProperty(above, count);
    }
}

} // namespace

double DialogStack::enter(double id)
{
    Q_ASSERT(onGuiThread());
    if (has(id)) {
        return 0;
    }
    const double entered = id == 0 ? nextFree() : id;
    push(entered);
    return entered;
}

double DialogStack::enterPopup(double id)
{
    Q_ASSERT(onGuiThread());
    const double entered = id > 0 ? id : nextFree();
    push(entered);
    return entered;
}

void DialogStack::place(double id, QObject *dialog, const QJSValue &description)
{
    Q_ASSERT(onGuiThread());
    m_dialogs.insert(id, {dialog, description.isUndefined() ? QJSValue(QJSValue::NullValue) : description});
    countAbove();
}

void DialogStack::leave(double id)
{
    Q_ASSERT(onGuiThread());
    m_dialogs.remove(id);
    const auto place = m_ids.lastIndexOf(id);
    if (place >= 0) {
        m_ids.removeAt(place);
        Q_EMIT countChanged();
    }
    countAbove();
}

void DialogStack::countAbove()
{
    Q_ASSERT(onGuiThread());
    const auto ids = m_ids;
    int showing = 0;
    for (auto place = ids.size() - 1; place >= 0; --place) {
        const QPointer<QObject> dialog = m_dialogs.value(ids[place]).dialog;
        // Below a covered dialog all are covered already.
        if (showing >= m_drawn && is(dialog, "covered")) {
            return;
        }
        setAbove(dialog, showing);
        // Who heard of it has changed the stack, which has been counted anew.
        if (m_ids != ids) {
            return;
        }
        if (is(dialog, "visible") && !is(dialog, "closing")) {
            ++showing;
        }
    }
}

double DialogStack::nextFree()
{
    while (has(m_nextFree)) {
        --m_nextFree;
    }
    return m_nextFree--;
}

void DialogStack::push(double id)
{
    m_ids.append(id);
    Q_EMIT countChanged();
}
