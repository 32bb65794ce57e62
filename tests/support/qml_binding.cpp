#include "qml_binding.h"

#include <gtest/gtest.h>

#include <QQmlComponent>
#include <QTest>
#include <QThread>

#include <stdexcept>

QmlBinding::QmlBinding(const QStringList &modules, const QString &expression)
{
    m_engine.addImportPath(QStringLiteral(":/"));
    QString source = QStringLiteral("import QtQml\n");
    for (const QString &module : modules) {
        source += QStringLiteral("import %1\n").arg(module);
    }
    source += QStringLiteral("QtObject { property var seen: %1 }\n").arg(expression);
    QQmlComponent component(&m_engine);
    component.setData(source.toUtf8(), QUrl());
    m_object.reset(component.create());
    if (!m_object) {
        throw std::runtime_error(component.errorString().toStdString());
    }
    m_changes = std::make_unique<SignalLog>(*m_object, std::vector<std::string>{"seenChanged"});
}

QVariant QmlBinding::value() const
{
    return m_object->property("seen");
}

bool QmlBinding::becomes(const QVariant &expected) const
{
    const bool reached = QTest::qWaitFor([&] { return value() == expected; });
    EXPECT_TRUE(reached) << "the binding stays at " << value().toString().toStdString();
    return reached;
}

std::string refusalOf(const char *program)
{
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(":/"));
    QQmlComponent component(&engine);
    component.setData(program, QUrl());
    return component.errorString().toStdString();
}

void onForeignThread(const std::function<void()> &task)
{
    const std::unique_ptr<QThread> thread(QThread::create(task));
    thread->start();
    thread->wait();
}
