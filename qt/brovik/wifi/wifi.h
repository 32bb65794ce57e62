#pragma once

#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QJSValue>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

// clang-format off
/// Two kinds of rows: a value that the backend writes, and one that follows from others and that Python does not know.
#define WIFI_PROPERTIES(P, DERIVED) \
    P(WifiState,          state,             setState,             "state",              Disconnected, "State of the wireless connection.") \
    P(QString,            ssid,              setSsid,              "ssid",               {},    "Name of the connected network.") \
    P(int,                qualityPercentage, setQualityPercentage, "quality_percantage", 0,     "Quality of the signal, percent.") \
    DERIVED(int,          qualityLevel,      setQualityLevel,      "",                   0,     "Bars of the icon, 0 to 3; -1 after a change of state.") \
    P(bool,               is5GHz,            setIs5GHz,            "is_5_ghz",           false, "The connection uses the 5 GHz band.") \
    P(QList<QVariantMap>, ipMapList,         setIpMapList,         "ip_map_list",        {},    "The network interfaces, one record each.") \
    P(QVariantMap,        scanResults,       setScanResults,       "scan_results",       {},    "The networks found, by name.")
// clang-format on

/// State of the network. Scans and connects nothing: the backend does. Lives on the GUI thread; written from
/// any Python thread under its mutex.
class Wifi : public SharedObject, public SharedSingleton<Wifi>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum WifiState : int { Connected, Connecting, Disconnected, Aborted };
    Q_ENUM(WifiState)

    /// The operator's requests.
    enum WifiAction : int { Scan, IPData, Connect, Disconnect, Login, RestartWireguard };
    Q_ENUM(WifiAction)

    WIFI_PROPERTIES(SHARED_PROPERTY, SHARED_PROPERTY)

public:
    /// Stores what a scan has found and tells of it, even if it is what the last one has found.
    void takeScanResults(const QVariantMap &results);

Q_SIGNALS:
    /// A request of the operator.
    void toPy(Wifi::WifiAction action, const QJSValue &value);
    /// The login page is to open for this network, with this password in its field.
    void gotLoginData(const QString &ssid, const QString &psk);
    /// A scan has ended, and its results are stored.
    void gotScanResults();
    /// A scan has ended without results.
    void abortWifiScan();

private Q_SLOTS:
    void _setQualityLevel();
    void _resetQualityLevel();

private:
    friend class SharedSingleton<Wifi>;
    Wifi();
};
