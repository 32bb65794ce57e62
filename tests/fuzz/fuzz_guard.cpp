// The guard against a second instance with any list of windows: it finds the program exactly if the title is
// in it.
#include "fuzzing.h"

#include "src/instance_guard.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

constexpr const char *title = "Brovik Kubelor";

const QTemporaryDir *folder = nullptr; ///< Lives as long as the process.

void write(const QString &name, const QByteArray &content)
{
    QFile file(folder->filePath(name));
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), "a file is written",
            name);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

void fuzzingBegins()
{
    folder = new QTemporaryDir;
    std::atexit([] { delete folder; });
    // The window tool: it lists what stands in the file, ends as the other one says, and notes what it
    // raises.
    write(QStringLiteral("wmctrl"), "#!/bin/sh\n"
                                    "cd \"${0%/*}\"\n"
                                    "case $1 in -a) printf %s \"$2\" >raised; exit 0 ;; esac\n"
                                    "read -r code <code; /bin/cat list; exit \"$code\"\n");
    qputenv("PATH", folder->path().toLocal8Bit());
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    const int code = data.ConsumeIntegralInRange(0, 3);
    const QByteArray windows = QByteArray::fromStdString(data.ConsumeRemainingBytesAsString());
    write(QStringLiteral("code"), QByteArray::number(code) + '\n');
    write(QStringLiteral("list"), windows);
    QFile::remove(folder->filePath(QStringLiteral("raised")));

    const bool found = raiseRunningInstance(QStringLiteral("/nowhere/raise.sock"));

    require(found == windows.contains(title), "a window is found by its title", windows);
    QFile raised(folder->filePath(QStringLiteral("raised")));
    require(found == raised.open(QIODevice::ReadOnly), "what is found is raised, and nothing else", windows);
    require(!found || raised.readAll() == title, "it is raised by its title");
    return 0;
}
