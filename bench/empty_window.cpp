// The least program of this kind: an empty window in the same style.

#include <QApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Material"));
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick.Controls\n"
                    "ApplicationWindow { visible: true; width: 800; height: 1200; title: 'empty' }\n");
    return QApplication::exec();
}
