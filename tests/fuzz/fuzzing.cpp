#include "fuzzing.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

/// What the code logs on the way is no finding, and would hide one.
void dropMessage(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    }
}

constexpr char16_t standsForHigh = 0x10;
constexpr char16_t standsForLow = 0x11;
constexpr char16_t high = 0xd83d;
constexpr char16_t low = 0xde00;

} // namespace

extern "C" const char *__asan_default_options()
{
    // What lives as long as the process is no leak; those are looked for by the tests.
    return "detect_leaks=0:allocator_may_return_null=1:detect_stack_use_after_return=1";
}

extern "C" const char *__ubsan_default_options()
{
    return "halt_on_error=1:print_stacktrace=1";
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Objects of Python are seen one by one only without its own allocator.
    qputenv("PYTHONMALLOC", "malloc");
    qInstallMessageHandler(dropMessage);
    new QGuiApplication(*argc, *argv); // lives as long as the process
    fuzzingBegins();
    return 0;
}

void breakPromise(const char *promise, const QString &details)
{
    std::fprintf(stderr, "BROKEN: %s: %s\n", promise, qUtf8Printable(details));
    std::abort();
}

QString consumeText(FuzzedDataProvider &data, std::size_t longest)
{
    QString text = QString::fromStdString(data.ConsumeRandomLengthString(longest));
    text.replace(QChar(standsForHigh), QChar(high)).replace(QChar(standsForLow), QChar(low));
    return text;
}

double consumeNumber(FuzzedDataProvider &data)
{
    using Limits = std::numeric_limits<double>;
    switch (data.ConsumeIntegralInRange(0, 3)) {
    case 0:
        return data.ConsumeIntegralInRange(-1000, 1000);
    case 1:
        return data.ConsumeFloatingPoint<double>();
    case 2:
        return data.PickValueInArray({0.0, -0.0, Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
                                      Limits::max(), Limits::lowest(), Limits::min(), Limits::denorm_min(),
                                      Limits::epsilon(), 2147483648.0, -2147483649.0, 9007199254740992.0});
    default:
        return data.ConsumeIntegral<std::int16_t>() / 8.0;
    }
}
