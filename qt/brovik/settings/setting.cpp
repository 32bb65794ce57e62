#include "brovik/settings/setting.h"

#include "shared/gui_thread.h"

#include <QVariant>
#include <QtQml/qqmlinfo.h>

#include <algorithm>
#include <iterator>

namespace {

template <typename T> using Read = T (*)(const Settings &);
using Changed = void (Settings::*)();

} // namespace

struct NumberSetting::Fields
{
    Settings::SettingsEnum key;
    Read<double> value;
    Read<double> lowest;
    Read<double> highest;
    Read<double> defaultValue;
    Changed valueChanged;
    Changed lowestChanged;
    Changed highestChanged;
};

struct SwitchSetting::Fields
{
    Settings::SettingsEnum key;
    Read<bool> value;
    Read<bool> defaultValue;
    Changed valueChanged;
};

struct TextSetting::Fields
{
    Settings::SettingsEnum key;
    Read<QString> value;
    Changed valueChanged;
};

// clang-format off
#define READ(type, getter) [](const Settings &settings) -> type { return settings.getter(); }
#define NO_FIELDS(...)
#define NUMBER_FIELDS(number, enumerator, type, name, ...)                                                   \
    {Settings::enumerator,                                                                                   \
     READ(double, name), READ(double, name##Min), READ(double, name##Max), READ(double, name##Default),      \
     &Settings::name##Changed, &Settings::name##MinChanged, &Settings::name##MaxChanged},
#define SWITCH_FIELDS(number, enumerator, type, name, ...)                                                   \
    {Settings::enumerator, READ(bool, name), READ(bool, name##Default), &Settings::name##Changed},
#define TEXT_FIELDS(number, enumerator, type, name, ...)                                                     \
    {Settings::enumerator, READ(QString, name), &Settings::name##Changed},
// clang-format on

namespace {

constexpr NumberSetting::Fields numberKeys[] = {
    SETTINGS_KEYS(NUMBER_FIELDS, NO_FIELDS, NO_FIELDS, NO_FIELDS)};
constexpr SwitchSetting::Fields switchKeys[] = {
    SETTINGS_KEYS(NO_FIELDS, SWITCH_FIELDS, NO_FIELDS, NO_FIELDS)};
constexpr TextSetting::Fields textKeys[] = {SETTINGS_KEYS(NO_FIELDS, NO_FIELDS, TEXT_FIELDS, NO_FIELDS)};

/// What a setting has stored in one of its fields; a default value without a key.
template <typename Fields, typename T> T read(const Fields *fields, Read<T> Fields::*field)
{
    Q_ASSERT(onGuiThread());
    return fields != nullptr ? (fields->*field)(Settings::instance()) : T();
}

/// Null for a key of another kind.
template <typename Table>
auto find(const Table &table, Settings::SettingsEnum key) -> decltype(std::data(table))
{
    const auto found = std::find_if(std::begin(table), std::end(table),
                                    [key](const auto &fields) { return fields.key == key; });
    return found == std::end(table) ? nullptr : &*found;
}

} // namespace

void Setting::setKey(Settings::SettingsEnum key)
{
    Q_ASSERT(onGuiThread());
    if (key == m_key) {
        return;
    }
    m_key = key;
    disconnect(&Settings::instance(), nullptr, this, nullptr);
    if (!takeUp(key)) {
        const QString name = QVariant::fromValue(key).toString();
        qmlWarning(this) << qUtf8Printable(name) << " is no key of this kind of setting";
    }
    announce(*this, &Setting::keyChanged);
    announce(*this, &Setting::valueChanged);
}

void Setting::ask(const QJSValue &value)
{
    Q_ASSERT(onGuiThread());
    announce(Settings::instance(), &Settings::toPy, m_key, value);
}

NumberSetting::NumberSetting(QObject *parent)
    : Setting(parent)
{
    connect(this, &Setting::keyChanged, this, &NumberSetting::lowestChanged);
    connect(this, &Setting::keyChanged, this, &NumberSetting::highestChanged);
}

double NumberSetting::value() const
{
    return read(m_fields, &Fields::value);
}

double NumberSetting::lowest() const
{
    return read(m_fields, &Fields::lowest);
}

double NumberSetting::highest() const
{
    return read(m_fields, &Fields::highest);
}

double NumberSetting::defaultValue() const
{
    return read(m_fields, &Fields::defaultValue);
}

bool NumberSetting::takeUp(Settings::SettingsEnum key)
{
    m_fields = find(numberKeys, key);
    if (m_fields == nullptr) {
        return false;
    }
    const Settings &settings = Settings::instance();
    connect(&settings, m_fields->valueChanged, this, &Setting::valueChanged);
    connect(&settings, m_fields->lowestChanged, this, &NumberSetting::lowestChanged);
    connect(&settings, m_fields->highestChanged, this, &NumberSetting::highestChanged);
    connect(&settings, &Settings::toPy, this, &NumberSetting::noteRequest);
    return true;
}

void NumberSetting::noteRequest(Settings::SettingsEnum key, const QJSValue &value)
{
    Q_ASSERT(onGuiThread());
    if (key == this->key()) {
        announce(*this, &NumberSetting::asked, value.toNumber());
    }
}

bool SwitchSetting::value() const
{
    return read(m_fields, &Fields::value);
}

bool SwitchSetting::defaultValue() const
{
    return read(m_fields, &Fields::defaultValue);
}

bool SwitchSetting::takeUp(Settings::SettingsEnum key)
{
    m_fields = find(switchKeys, key);
    if (m_fields == nullptr) {
        return false;
    }
    connect(&Settings::instance(), m_fields->valueChanged, this, &Setting::valueChanged);
    return true;
}

QString TextSetting::value() const
{
    return read(m_fields, &Fields::value);
}

bool TextSetting::takeUp(Settings::SettingsEnum key)
{
    m_fields = find(textKeys, key);
    if (m_fields == nullptr) {
        return false;
    }
    connect(&Settings::instance(), m_fields->valueChanged, this, &Setting::valueChanged);
    return true;
}
