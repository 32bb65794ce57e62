import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts

import kubelor.test
import main
import "items.js" as Items

// Nothing is cut off or overlaps, in the window's own size and in a larger one.
Item {
    id: root

    width: 100
    height: 100

    Component {
        id: windowComponent

        Main {}
    }

    ScreenTestCase {
        name: "SettingsFit"

        property Main window

        // All boxes, and every text as long as it gets.
        readonly property string longest: `
from brovik.settings import SettingsValues
config.Config.machine_version = config.MachineVersion.Legacy
config.Config.has_steam_valve = config.Config.steam_pressure_sterilization = config.Config.has_level_switch = True
sensor.Sensor.lw_type = sensor.SensorLwEnum.Seli_SLI_03
for key, value in SettingsValues.get_default_values().items():
    if isinstance(value, bool):
        setattr(SettingsValues, key, not value)
    elif isinstance(value, str):
        setattr(SettingsValues, key, "Reiniger " * 20)
    else:
        setattr(SettingsValues, key, getattr(SettingsValues, key + "_max", -0.123456789))
SettingsValues.test_lauge_level = True
actuator.Actuator.mv_lauge_in.name = "Ventil " * 20`

        function prepare() {
            Backend.run("actuator.Actuator.set_dout_model(actuator.Actuator.all_douts)");
            window = createTemporaryObject(windowComponent, root);
            tryVerify(() => window.active);
        }

        function test_fit_data() {
            const pages = [[0, "SettingsAuto"], [1, "SettingsElectrolyte"], [2, "SettingsMisc"], [5, "SettingsAppearance"], [6, "HandOp"]];
            const at = (w, h, texts) => pages.map(([index, name]) => ({tag: `${name} ${w}x${h} ${texts}`, index, w, h, texts}));
            return [].concat(...["usual", "longest"].map(texts => [...at(720, 950, texts), ...at(800, 1200, texts)]));
        }

        function test_fit(data) {
            window.width = data.w;
            window.height = data.h;
            findChild(window.contentItem, "tabs").currentIndex = 2;
            draw(window.contentItem);
            const pages = findChild(window.contentItem, "settingsPages");
            pages.currentIndex = data.index;
            const page = pages.children[data.index];
            Backend.run(this[data.texts]);
            draw(page);
            const labels = Items.below(page, item => item instanceof Label && item.visible);
            verify(labels.length > 0);
            for (const label of labels) {
                const tooSmall = Items.tooSmallFor(label, page);
                verify(!tooSmall, `${label.text}: ${tooSmall}`);
            }
        }
    }
}
