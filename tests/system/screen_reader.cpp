#include <QAccessible>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QMetaEnum>
#include <QQuickWindow>
#include <QSet>
#include <QTimer>

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

// Preloaded into the program: whoever connects to the socket KUBELOR_SCREEN is told all that shows, a JSON
// list in the order of the tree that Qt has for assistive technology. On the accessibility bus each of its
// nodes takes four calls, which was half of what a test of the whole program cost.

namespace {

using namespace std::chrono_literals;

/// A window that has drawn nothing for so long stands still, and what moves for longer than that does not
/// come to an end.
constexpr auto stillTime = 50ms;
constexpr auto longestMove = 500ms;

QString roleOf(QAccessibleInterface &node)
{
    const QString role =
        QString::fromLatin1(QMetaEnum::fromType<QAccessible::Role>().valueToKey(node.role()));
    return node.state().passwordEdit ? QStringLiteral("Password") : role;
}

QJsonObject described(QAccessibleInterface &node)
{
    const QRect box = node.rect();
    QJsonObject result = {{QStringLiteral("role"), roleOf(node)},
                          {QStringLiteral("name"), node.text(QAccessible::Name)},
                          {QStringLiteral("description"), node.text(QAccessible::Description)},
                          {QStringLiteral("box"), QJsonArray{box.x(), box.y(), box.width(), box.height()}},
                          {QStringLiteral("checked"), node.state().checked != 0}};
    if (QAccessibleTextInterface *const text = node.textInterface()) {
        result.insert(QStringLiteral("text"), text->text(0, text->characterCount()));
    }
    if (QAccessibleValueInterface *const value = node.valueInterface()) {
        result.insert(QStringLiteral("value"), value->currentValue().toDouble());
    }
    return result;
}

bool isShowing(const QAccessibleInterface &node)
{
    const QAccessible::State state = node.state();
    return !state.invisible && !state.offscreen;
}

/// Adds what shows below the node.
void addShown(QAccessibleInterface &node, QJsonArray &all)
{
    for (int index = 0; index < node.childCount(); ++index) {
        QAccessibleInterface *const child = node.child(index);
        if (child != nullptr && isShowing(*child)) {
            all.append(described(*child));
            addShown(*child, all);
        }
    }
}

/// Knows whether anything moves in the windows of the program.
class Movement : public QObject
{
public:
    explicit Movement(QObject *parent)
        : QObject(parent)
    {}

    bool isOver()
    {
        for (QWindow *const window : QGuiApplication::allWindows()) {
            watch(qobject_cast<QQuickWindow *>(window));
        }
        return m_lastFrame.hasExpired(stillTime.count());
    }

private:
    /// One that is new has just moved.
    void watch(QQuickWindow *window)
    {
        if (window == nullptr || m_windows.contains(window)) {
            return;
        }
        m_windows.insert(window);
        m_lastFrame.start();
        connect(window, &QQuickWindow::frameSwapped, this, [this] { m_lastFrame.start(); });
        connect(window, &QObject::destroyed, this, [this](QObject *gone) { m_windows.remove(gone); });
    }

    QSet<QObject *> m_windows;
    QElapsedTimer m_lastFrame;
};

/// Answers once nothing moves: what is on its way in or out takes presses along, and nobody presses as fast
/// as a test.
void answer(QLocalSocket &reader, Movement &movement, QDeadlineTimer lastTime)
{
    if (!movement.isOver() && !lastTime.hasExpired()) {
        QTimer::singleShot(stillTime / 5, &reader,
                           [&reader, &movement, lastTime] { answer(reader, movement, lastTime); });
        return;
    }
    QJsonArray all;
    if (QAccessibleInterface *const root = QAccessible::queryAccessibleInterface(qApp)) {
        addShown(*root, all);
    }
    reader.write(QJsonDocument(all).toJson(QJsonDocument::Compact));
    reader.disconnectFromServer();
}

/// Has the screens say what they are. The accessibility bus, when it answers, says that nobody listens there.
class Listener : public QObject, QAccessible::ActivationObserver
{
public:
    explicit Listener(QObject *parent)
        : QObject(parent)
    {
        listen();
        QAccessible::installActivationObserver(this);
    }

    ~Listener() override { QAccessible::removeActivationObserver(this); }

    Q_DISABLE_COPY_MOVE(Listener)

private:
    // QAccessible::setActive() tells of it and is asked by nobody.
    static void listen() { QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true); }

    void accessibilityActiveChanged(bool isActive) override
    {
        if (!isActive) {
            // Once the others know of this one.
            QMetaObject::invokeMethod(this, &Listener::listen, Qt::QueuedConnection);
        }
    }
};

void startReader()
{
    const QString socket = qEnvironmentVariable("KUBELOR_SCREEN");
    if (socket.isEmpty()) {
        return;
    }
    // Not for the children of the program.
    qunsetenv("LD_PRELOAD");
    qunsetenv("KUBELOR_SCREEN");
    new Listener(QCoreApplication::instance());
    auto *const server = new QLocalServer(QCoreApplication::instance());
    auto *const movement = new Movement(server);
    QObject::connect(server, &QLocalServer::newConnection, server, [server, movement] {
        while (QLocalSocket *const reader = server->nextPendingConnection()) {
            // Whoever asks may also give up before there is an answer.
            QObject::connect(reader, &QLocalSocket::disconnected, reader, &QObject::deleteLater);
            answer(*reader, *movement, QDeadlineTimer(longestMove));
        }
    });
    if (!server->listen(socket)) {
        qFatal("No socket %s: %s", qPrintable(socket), qPrintable(server->errorString()));
    }
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(startReader)
