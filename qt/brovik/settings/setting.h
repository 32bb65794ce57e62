#pragma once

#include "brovik/settings/settings.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// One setting by its key: shows what is stored, and asks the backend for another value. The derived classes
/// add the value with its type. Lives and is used on the GUI thread alone.
class Setting : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A setting is a NumberSetting, a SwitchSetting or a TextSetting")
    /// Which one. A key of another kind is a warning, and then nothing is stored here.
    Q_PROPERTY(Settings::SettingsEnum key READ key WRITE setKey NOTIFY keyChanged REQUIRED)

public:
    using QObject::QObject;

    Settings::SettingsEnum key() const { return m_key; }
    void setKey(Settings::SettingsEnum key);

Q_SIGNALS:
    void keyChanged();
    void valueChanged();

protected:
    /// Takes up the fields of the key, and returns whether it has those of this kind.
    virtual bool takeUp(Settings::SettingsEnum key) = 0;
    /// Asks the backend for this value.
    void ask(const QJSValue &value);

private:
    Settings::SettingsEnum m_key = Settings::SettingsEnumInvalid;
};

/// A setting that is a number, in the unit of its key.
class NumberSetting : public Setting
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double value READ value NOTIFY valueChanged)
    Q_PROPERTY(double lowest READ lowest NOTIFY lowestChanged)
    Q_PROPERTY(double highest READ highest NOTIFY highestChanged)
    Q_PROPERTY(double defaultValue READ defaultValue NOTIFY keyChanged)

public:
    /// How to read the fields of a key, and what tells of their changes.
    struct Fields;

    explicit NumberSetting(QObject *parent = nullptr);

    double value() const;
    /// The bounds of this moment.
    double lowest() const;
    double highest() const;
    double defaultValue() const;

    Q_INVOKABLE void send(double value) { ask(value); }

Q_SIGNALS:
    void lowestChanged();
    void highestChanged();
    /// The backend has been asked for this value of the setting, by whomever.
    void asked(double value);

protected:
    bool takeUp(Settings::SettingsEnum key) override;

private:
    void noteRequest(Settings::SettingsEnum key, const QJSValue &value);

    const Fields *m_fields = nullptr;
};

/// A setting that is on or off.
class SwitchSetting : public Setting
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool value READ value NOTIFY valueChanged)
    Q_PROPERTY(bool defaultValue READ defaultValue NOTIFY keyChanged)

public:
    struct Fields;

    using Setting::Setting;

    bool value() const;
    bool defaultValue() const;

    Q_INVOKABLE void send(bool value) { ask(value); }

protected:
    bool takeUp(Settings::SettingsEnum key) override;

private:
    const Fields *m_fields = nullptr;
};

/// A setting that is a text.
class TextSetting : public Setting
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString value READ value NOTIFY valueChanged)

public:
    struct Fields;

    using Setting::Setting;

    QString value() const;

    Q_INVOKABLE void send(const QString &value) { ask(value); }

protected:
    bool takeUp(Settings::SettingsEnum key) override;

private:
    const Fields *m_fields = nullptr;
};
