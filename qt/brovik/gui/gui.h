#pragma once

#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QColor>
#include <QJSValue>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

#include <atomic>
#include <deque>
#include <functional>

class BackendControl;

// clang-format off
/// What the backend writes and the screens show.
#define GUI_STATE(P) \
    P(bool,    indicateScrollable, setIndicateScrollable, "indicate_scrollable", true, "Shadows may show that an area can be scrolled.")

/// What the host writes and the screens show.
#define GUI_HOST_STATE(P) \
    P(bool,    controlsEnabled,    setControlsEnabled,    nullptr, false, "The interpreter runs with the backend.") \
    P(bool,    darkThemeEnabled,   setDarkThemeEnabled,   nullptr, false, "The theme at start.")

#define GUI_STATUS(P) \
    P(QString, status,  setStatus,  "status",  QStringLiteral("Python Backend nicht initialisiert"), "Status line under the header.") \
    P(QString, status2, setStatus2, "status2", QStringLiteral("Keine Statusmeldungen vorhanden"),    "Text in the header.") \
    P(QString, status3, setStatus3, "status3", QString(), "Line of the automatic page; hidden while empty.")

/// Sizes that the backend may scale: each with the constant of its start value.
#define GUI_SIZES(S) \
    S(double, fSizeXs,       setFSizeXs,       "fsize_xs",        12.0, "Very small font, points.") \
    S(double, fSizeS,        setFSizeS,        "fsize_s",         14.0, "Small font, points.") \
    S(double, fSizeM,        setFSizeM,        "fsize_m",         16.0, "Medium font, points.") \
    S(double, fSizeL,        setFSizeL,        "fsize_l",         18.0, "Large font, points.") \
    S(double, hSize,         setHSize,         "hsize",           20.0, "Font of headings, points.") \
    S(int,    controlHeight, setControlHeight, "control_height",  65,   "Height of controls, pixels.") \
    S(int,    boxLeftMargin, setBoxLeftMargin, "box_left_margin", 35,   "Left margin of boxes, pixels.")
// clang-format on

/// What the backend and the screens exchange that belongs to no function of the machine: page, status lines,
/// messages, dialogs, sizes. Lives on the GUI thread; written from any Python thread under its mutex.
/// `title`, `fullscreen` and `itemsScaleFactor` take no lock.
class Gui : public SharedObject, public SharedSingleton<Gui>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(bool fullscreen READ fullscreen WRITE setFullscreen NOTIFY fullscreenChanged)
    Q_PROPERTY(bool debug READ debug CONSTANT)
    Q_PROPERTY(int scaleFactor READ scaleFactor CONSTANT)
    Q_PROPERTY(double itemsScaleFactor READ itemsScaleFactor NOTIFY itemsScaleFactorChanged)
    Q_PROPERTY(PageEnum page READ page NOTIFY pageChanged)

public:
    enum PageEnum : int {
        PageAuto,
        PageSettingsAuto,
        PageSettingsElectrolyte,
        PageSettingsMisc,
        PageSettingsNetwork,
        PageSettingsAppearance,
        PageWifiLogin,
        PageHandOp,
        PageChart,
        PageChartsList,
        PageUpdatesOverview,
        PageUpdatesAvailable,
        PageUpdatesInstalled,
        PageUpdatesConsole,
        PageUpdatesShell
    };
    Q_ENUM(PageEnum)

    enum IconEnum : int { IconSaved, IconSmiley, IconInfo };
    Q_ENUM(IconEnum)

    enum ColorEnum : int { ColorTransparent, ColorGreen };
    Q_ENUM(ColorEnum)

    enum PopupEnum : int { PopupFullen, PopupRecovery };
    Q_ENUM(PopupEnum)

    enum GuiValueEnum : int { Ready, DeleteWarnings, FlashPico, PopupOpened, DialogData };
    Q_ENUM(GuiValueEnum)

    QString title() const { return m_title; }
    void setTitle(const QString &title);
    bool fullscreen() const { return m_fullscreen; }
    void setFullscreen(bool fullscreen);
    static bool debug() { return false; }
    static int scaleFactor() { return 1; }
    double itemsScaleFactor() const { return m_itemsScaleFactor.load(); }
    PageEnum page() const { return read(m_page); }

    Q_INVOKABLE void deleteWarnings();
    /// Stops the backend and then the machine. The program goes on, without its backend, if that fails.
    Q_INVOKABLE void poweroff();
    /// As poweroff(), with a restart of the machine.
    Q_INVOKABLE void reboot();
    /// Reports or asks for the current page.
    Q_INVOKABLE void changePage(Gui::PageEnum page);

    // For the host and the backend.

    /// The host that poweroff() and reboot() stop; not owned.
    void setBackendControl(BackendControl *control) { m_backendControl = control; }

    /// Shows a message, or keeps it until the screens are loaded. Any thread.
    void showMessage(const QString &title, const QString &text, const QString &category);

    /// Shows an exception record, or keeps it until the screens are loaded. Any thread.
    void showException(const QVariantMap &error);

    /// The screens are loaded: hands out what was kept, messages first. GUI thread, once.
    void deliverPending();

    /// Raises toastNotify with the icon's address; an icon without a name leaves the toast its last one.
    void showToast(const QString &text, IconEnum icon, ColorEnum color, int duration);

    /// Multiplies the present sizes; accumulates.
    void applyItemsScale(double factor);
    /// Sets the sizes to their defaults times the factor.
    void applyItemsScaleToDefault(double factor);

Q_SIGNALS:
    void titleChanged();
    void fullscreenChanged(bool fullscreen);
    void itemsScaleFactorChanged();
    void pageChanged();

    GUI_STATE(SHARED_PROPERTY)
    GUI_HOST_STATE(SHARED_PROPERTY)
    GUI_STATUS(SHARED_PROPERTY)
    GUI_SIZES(SHARED_DEFAULTED)

Q_SIGNALS:
    void closeDialog(int id, bool accept);
    void closeCurrentDialog(bool accept);
    void toastNotify(const QString &text, const QVariant &iconUrl, Gui::ColorEnum color, int duration);
    void toastWarn(const QString &text, int duration);
    void setWarningsDialogData(int count, const QString &title, const QString &text, const QString &yesText);
    void setPicoStdout(const QString &text);
    void setPicoStderr(const QString &text);
    void setPicoReturnValue(int value);
    void showPoweroffDialog();
    void requestPopup(Gui::PopupEnum which, int id);
    void message(const QString &title, const QString &text, const QString &category, int id = 0);
    void question(const QString &title, const QString &text, const QVariant &options);
    void exception(const QVariantMap &error);
    /// Raised by screens. Blocks until the backend has handled it.
    void toPy(Gui::GuiValueEnum what, const QJSValue &value);
    void _toPyQVar(Gui::GuiValueEnum what, const QVariant &value);

private:
    friend class SharedSingleton<Gui>;
    Gui() = default;

    struct PendingMessage
    {
        QString title;
        QString text;
        QString category;
    };

    /// Runs a command that ends the machine; `title` is that of the dialog if it fails.
    void endMachine(const QString &command, const QString &title);
    void setItemsScaleFactor(double factor);
    void tellMessage(const QString &title, const QString &text, const QString &category);
    bool keepUntilReady(const std::function<void()> &keep);
    template <typename Queue> bool takeFirst(Queue &queue, typename Queue::value_type &first);

    QString m_title;
    bool m_fullscreen = false;
    std::atomic<double> m_itemsScaleFactor = 1.0;
    PageEnum m_page = PageAuto;
    BackendControl *m_backendControl = nullptr;
    bool m_ready = false;
    std::deque<PendingMessage> m_pendingMessages;
    std::deque<QVariantMap> m_pendingExceptions;
};
