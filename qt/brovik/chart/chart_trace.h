#pragma once

#include "chart_line.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

/// Draws one line of the chart into the series that the page registered for it. GUI thread.
class ChartTrace : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)

    Q_PROPERTY(ChartLine *line READ line WRITE setLine NOTIFY lineChanged REQUIRED)
    Q_PROPERTY(Kind kind READ kind WRITE setKind NOTIFY kindChanged REQUIRED)
    Q_PROPERTY(double maxY READ maxY NOTIFY maxYChanged)
    Q_PROPERTY(double lastX READ lastX NOTIFY lastXChanged)

public:
    /// A measured quantity, an output that is off or on at a height of its own, or the number of the step.
    enum Kind { Measured, Actuator, Step };
    Q_ENUM(Kind)

    using QObject::QObject;

    ChartLine *line() const { return m_line; }
    void setLine(ChartLine *line);
    Kind kind() const { return m_kind; }
    void setKind(Kind kind);

    /// Of a measured line: its highest value since the data was last replaced, at least 0.5.
    double maxY() const { return m_maxY; }
    /// x of the last drawn point, seconds; 0 without points.
    double lastX() const { return m_lastX; }

    /// Draws at once what is known, without moving the view.
    Q_INVOKABLE void redraw();

    void classBegin() override {}
    void componentComplete() override;

Q_SIGNALS:
    void lineChanged();
    void kindChanged();
    void maxYChanged();
    void lastXChanged();
    /// A measured line was drawn up to this x, 1.0 if it is empty. The page moves its view.
    void pointsDrawn(double xLast);

private:
    ChartLine *m_line = nullptr;
    Kind m_kind = Measured;
    double m_maxY = 0.5;
    double m_lastX = 0.0;
};
