#include "brovik/settings/settings.h"
#include "log_capture.h"
#include "src/py/bridge.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

/// A backend that logs what the settings pages ask for.
constexpr auto backend = R"(
import brovik

def init(*arguments):
    pass

def settings_from_cpp(key, value):
    brovik.Logger.info(f"{key.name} {int(key)} {value!r}")
)";

class SettingsToBackend : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir(m_directory.path()).mkdir(QStringLiteral("controller")));
        QFile file(m_directory.filePath(QStringLiteral("controller/__init__.py")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(backend);
    }

    QTemporaryDir m_directory;
};

} // namespace

TEST_F(SettingsToBackend, TheInvalidKeyReachesTheBackendLikeAnyOther)
{
    Bridge bridge({QStringLiteral("python3")}, false, m_directory.path());
    const LogCapture capture;
    Settings &settings = Settings::instance();
    Q_EMIT settings.toPy(Settings::SettingsEnumInvalid, QJSValue(1.5));
    Q_EMIT settings.toPy(Settings::POffsetSet, QJSValue(QJSValue::NullValue));
    Q_EMIT settings.toPy(Settings::UseCO2AfterSaure, QJSValue(true));
    EXPECT_THAT(capture.texts(QtInfoMsg),
                testing::ElementsAre("Invalid 0 1.5", "POffsetSet 39 None", "use_co2_after_saure 43 True"));
}
