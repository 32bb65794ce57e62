#include "brovik/gui/gui.h"
#include "declared.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

TEST(GuiDeclarations, Properties)
{
    EXPECT_THAT(
        declaredProperties(Gui::staticMetaObject),
        ElementsAre("writable QString title -> titleChanged()",
                    "writable bool fullscreen -> fullscreenChanged(bool)", "bool debug constant",
                    "int scaleFactor constant", "double itemsScaleFactor -> itemsScaleFactorChanged()",
                    "Gui::PageEnum page -> pageChanged()",
                    "bool indicateScrollable -> indicateScrollableChanged()",
                    "bool controlsEnabled -> controlsEnabledChanged()",
                    "bool darkThemeEnabled -> darkThemeEnabledChanged()", "QString status -> statusChanged()",
                    "QString status2 -> status2Changed()", "QString status3 -> status3Changed()",
                    "double fSizeXs -> fSizeXsChanged()", "double fSizeXsDefault constant",
                    "double fSizeS -> fSizeSChanged()", "double fSizeSDefault constant",
                    "double fSizeM -> fSizeMChanged()", "double fSizeMDefault constant",
                    "double fSizeL -> fSizeLChanged()", "double fSizeLDefault constant",
                    "double hSize -> hSizeChanged()", "double hSizeDefault constant",
                    "int controlHeight -> controlHeightChanged()", "int controlHeightDefault constant",
                    "int boxLeftMargin -> boxLeftMarginChanged()", "int boxLeftMarginDefault constant"));
}

TEST(GuiDeclarations, Signals)
{
    EXPECT_THAT(declaredSignals(Gui::staticMetaObject),
                ElementsAre("titleChanged()", "fullscreenChanged(bool)", "itemsScaleFactorChanged()",
                            "pageChanged()", "indicateScrollableChanged()", "controlsEnabledChanged()",
                            "darkThemeEnabledChanged()", "statusChanged()", "status2Changed()",
                            "status3Changed()", "fSizeXsChanged()", "fSizeSChanged()", "fSizeMChanged()",
                            "fSizeLChanged()", "hSizeChanged()", "controlHeightChanged()",
                            "boxLeftMarginChanged()", "closeDialog(int,bool)", "closeCurrentDialog(bool)",
                            "toastNotify(QString,QVariant,Gui::ColorEnum,int)", "toastWarn(QString,int)",
                            "setWarningsDialogData(int,QString,QString,QString)", "setPicoStdout(QString)",
                            "setPicoStderr(QString)", "setPicoReturnValue(int)", "showPoweroffDialog()",
                            "requestPopup(Gui::PopupEnum,int)", "message(QString,QString,QString,int)",
                            "message(QString,QString,QString)", "question(QString,QString,QVariant)",
                            "exception(QVariantMap)", "toPy(Gui::GuiValueEnum,QJSValue)",
                            "_toPyQVar(Gui::GuiValueEnum,QVariant)"));
}

TEST(GuiDeclarations, Invokables)
{
    EXPECT_THAT(declaredInvokables(Gui::staticMetaObject),
                ElementsAre("void deleteWarnings()", "void poweroff()", "void reboot()",
                            "void changePage(Gui::PageEnum)"));
}

TEST(GuiDeclarations, Enumerators)
{
    const auto enumerators = [](const char *name) {
        return declaredEnumerators(Gui::staticMetaObject, name);
    };
    EXPECT_THAT(enumerators("PageEnum"),
                ElementsAre("PageAuto = 0", "PageSettingsAuto = 1", "PageSettingsElectrolyte = 2",
                            "PageSettingsMisc = 3", "PageSettingsNetwork = 4", "PageSettingsAppearance = 5",
                            "PageWifiLogin = 6", "PageHandOp = 7", "PageChart = 8", "PageChartsList = 9",
                            "PageUpdatesOverview = 10", "PageUpdatesAvailable = 11",
                            "PageUpdatesInstalled = 12", "PageUpdatesConsole = 13", "PageUpdatesShell = 14"));
    EXPECT_THAT(enumerators("IconEnum"), ElementsAre("IconSaved = 0", "IconSmiley = 1", "IconInfo = 2"));
    EXPECT_THAT(enumerators("ColorEnum"), ElementsAre("ColorTransparent = 0", "ColorGreen = 1"));
    EXPECT_THAT(enumerators("PopupEnum"), ElementsAre("PopupFullen = 0", "PopupRecovery = 1"));
    EXPECT_THAT(enumerators("GuiValueEnum"), ElementsAre("Ready = 0", "DeleteWarnings = 1", "FlashPico = 2",
                                                         "PopupOpened = 3", "DialogData = 4"));
}
