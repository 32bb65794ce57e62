#include "src/py/bindings/bindings.h"

#include "brovik/gui/gui.h"
#include "src/py/bindings/enums.h"
#include "src/py/python_property.h"

namespace py = pybind11;

namespace {

void bindGuiEnums(py::module_ &module)
{
    bindEnum<Gui::PageEnum>(module, "PageEnum", "The pages of the program.", "Page");
    bindEnum<Gui::IconEnum>(module, "IconEnum", "Icons of a toast.", "Icon");
    bindEnum<Gui::ColorEnum>(module, "ColorEnum", "Backgrounds of a toast.", "Color");
    bindEnum<Gui::GuiValueEnum>(module, "GuiEnum", "What the screens report.");
    bindEnum<Gui::PopupEnum>(module, "PopupEnum", "Popups that the backend may request.", "Popup");
}

template <typename Class> void bindProperties(Class &cls)
{
    using Self = Gui;
    bindProperty(cls, "page", &Self::page, &Self::changePage, "The current page.");
    GUI_STATE(BIND_PROPERTY)
    GUI_STATUS(BIND_PROPERTY)
    GUI_SIZES(BIND_PROPERTY)
}

template <typename Class> void bindFunctions(Class &cls)
{
    using namespace py::literals;
    cls.def("close_dialog", announcer(&Gui::closeDialog), "id_"_a, pythonArgument<bool>("accept") = false,
            "Closes the open dialog of this id.");
    cls.def("close_current_dialog", announcer(&Gui::closeCurrentDialog), pythonArgument<bool>("accept"),
            "Closes the top dialog.");
    cls.def("toast_notify", &Gui::showToast, "text"_a, "icon_enum"_a, "color_enum"_a = Gui::ColorTransparent,
            "duration"_a = 1000, "Shows a short note with an icon, for `duration` milliseconds.");
    cls.def("toast_warn", announcer<Cost::Toast>(&Gui::toastWarn), "text"_a, "duration"_a = 1000,
            "Shows a short warning, for `duration` milliseconds.");
    cls.def("set_warnings_dialog_data", announcer(&Gui::setWarningsDialogData), "count"_a, "title"_a,
            "text"_a, "yes_txt"_a);
    cls.def("set_pico_stdout", announcer(&Gui::setPicoStdout),
            "Output of the microcontroller's update. No screen shows it.");
    cls.def("set_pico_stderr", announcer(&Gui::setPicoStderr),
            "Errors of the microcontroller's update. No screen shows them.");
    cls.def("set_pico_return_value", announcer(&Gui::setPicoReturnValue),
            "Result of the microcontroller's update. No screen shows it.");
    cls.def("show_poweroff_dialog", announcer<Cost::Dialog>(&Gui::showPoweroffDialog),
            "Opens the power popup.");
    cls.def("request_popup", announcer<Cost::Dialog>(&Gui::requestPopup), "which"_a, "id_"_a,
            "Asks for a popup. No screen has one at present.");
    cls.def("message", &Gui::showMessage, "title"_a, "text"_a, "category"_a,
            "Opens a message; categories: info, warning, error, success.");
    cls.def(
        "question",
        [](Gui &gui, const QString &title, const QString &text, const QVariantMap &options) {
            announce<Cost::Dialog>(gui, &Gui::question, title, text, options);
        },
        "title"_a, "text"_a, "options"_a, "Opens a question; docs/backend.md tells its options.");
    cls.def("apply_items_scale", &Gui::applyItemsScale, "factor"_a, "Multiplies the present sizes.");
    cls.def("apply_items_scale_to_default", &Gui::applyItemsScaleToDefault, "factor"_a,
            "Sets all sizes to their defaults times the factor.");
}

} // namespace

void bindGui(py::module_ &module)
{
    bindGuiEnums(module);
    auto cls = sharedClass<Gui>(module, "GuiClass", "Speaks to the operator.");
    bindProperties(cls);
    bindFunctions(cls);
    publishSingleton<Gui>(module, "Gui");
}
