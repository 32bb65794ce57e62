#include "brovik/gui/gui.h"

#include "shared/backend_control.h"
#include "shared/gui_thread.h"

#include <QCoreApplication>
#include <QProcess>

#include <cmath>

namespace {

template <typename Size> Size scaled(Size size, double factor)
{
    if constexpr (std::is_integral_v<Size>) {
        return static_cast<Size>(std::lround(size * factor));
    } else {
        return size * factor;
    }
}

QVariant iconUrl(Gui::IconEnum icon)
{
    switch (icon) {
    case Gui::IconSaved:
        return QStringLiteral("qrc:/brovik/base/img/save.svg");
    case Gui::IconSmiley:
        return QStringLiteral("qrc:/brovik/base/img/emoji-smile.svg");
    case Gui::IconInfo:
        return QStringLiteral("qrc:/brovik/base/img/info-circle.svg");
    }
    return {};
}

} // namespace

void Gui::setTitle(const QString &title)
{
    if (m_title == title) {
        return;
    }
    m_title = title;
    announce(*this, &Gui::titleChanged);
}

void Gui::setFullscreen(bool fullscreen)
{
    if (m_fullscreen == fullscreen) {
        return;
    }
    m_fullscreen = fullscreen;
    announce(*this, &Gui::fullscreenChanged, fullscreen);
}

void Gui::setItemsScaleFactor(double factor)
{
    if (m_itemsScaleFactor == factor) {
        return;
    }
    m_itemsScaleFactor = factor;
    announce(*this, &Gui::itemsScaleFactorChanged);
}

void Gui::deleteWarnings()
{
    announce(*this, &Gui::_toPyQVar, DeleteWarnings, QVariant());
}

void Gui::poweroff()
{
    endMachine(QStringLiteral("poweroff"), QStringLiteral("Poweroff"));
}

void Gui::reboot()
{
    endMachine(QStringLiteral("reboot"), QStringLiteral("Reboot"));
}

void Gui::changePage(PageEnum page)
{
    change(m_page, page, &Gui::pageChanged);
}

bool Gui::keepUntilReady(const std::function<void()> &keep)
{
    const SharedLocker lock(&m_mutex);
    if (m_ready) {
        return false;
    }
    keep();
    return true;
}

// The signals leave without the mutex: a dialog that opens calls the backend and waits for it.

void Gui::showMessage(const QString &title, const QString &text, const QString &category)
{
    if (!keepUntilReady([&] { m_pendingMessages.push_back({title, text, category}); })) {
        tellMessage(title, text, category);
    }
}

void Gui::showException(const QVariantMap &error)
{
    if (!keepUntilReady([&] { m_pendingExceptions.push_back(error); })) {
        announce<Cost::Dialog>(*this, &Gui::exception, error);
    }
}

template <typename Queue> bool Gui::takeFirst(Queue &queue, typename Queue::value_type &first)
{
    const SharedLocker lock(&m_mutex);
    if (queue.empty()) {
        return false;
    }
    first = std::move(queue.front());
    queue.pop_front();
    return true;
}

void Gui::deliverPending()
{
    Q_ASSERT(onGuiThread());
    {
        const SharedLocker lock(&m_mutex);
        m_ready = true;
    }
    PendingMessage pending;
    while (takeFirst(m_pendingMessages, pending)) {
        tellMessage(pending.title, pending.text, pending.category);
    }
    QVariantMap error;
    while (takeFirst(m_pendingExceptions, error)) {
        announce<Cost::Dialog>(*this, &Gui::exception, error);
    }
}

void Gui::tellMessage(const QString &title, const QString &text, const QString &category)
{
    announce<Cost::Dialog>(*this, &Gui::message, title, text, category, 0);
}

void Gui::showToast(const QString &text, IconEnum icon, ColorEnum color, int duration)
{
    announce<Cost::Toast>(*this, &Gui::toastNotify, text, iconUrl(icon), color, duration);
}

void Gui::applyItemsScale(double factor)
{
#define SCALE_SIZE(type, name, setter, pyName, initial, doc) setter(scaled(name(), factor));
    GUI_SIZES(SCALE_SIZE)
#undef SCALE_SIZE
    setItemsScaleFactor(m_itemsScaleFactor * factor);
}

void Gui::applyItemsScaleToDefault(double factor)
{
#define SCALE_DEFAULT(type, name, setter, pyName, initial, doc) setter(scaled(name##Default(), factor));
    GUI_SIZES(SCALE_DEFAULT)
#undef SCALE_DEFAULT
    setItemsScaleFactor(factor);
}

void Gui::endMachine(const QString &command, const QString &title)
{
    if (m_backendControl != nullptr) {
        m_backendControl->stopPython();
    }
    const int result = QProcess::execute(command);
    if (result == 0) {
        QCoreApplication::quit();
        return;
    }
    tellMessage(title, QStringLiteral("'%1' hat den Fehlercode %2 zurückgegeben").arg(command).arg(result),
                QStringLiteral("error"));
}
