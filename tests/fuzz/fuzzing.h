#pragma once

#include <QDebug>
#include <QString>

#include <cstddef>
#include <cstdint>

// `require` ends the process on purpose, and the provider's header lacks what -Wconversion asks for.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wconversion"
#include <fuzzer/FuzzedDataProvider.h>
#pragma clang diagnostic pop

// What all fuzzers are made of. A fuzzer is a file with two functions: fuzzingBegins(), which makes what all
// runs share, and LLVMFuzzerTestOneInput(), which turns the bytes into calls and says by require() what must
// hold.

/// Called once, when there is an application without a screen and the log is silent.
void fuzzingBegins();

/// Ends the process, which makes the fuzzer keep the input.
[[noreturn]] void breakPromise(const char *promise, const QString &details);

/// What the code under test promises. The details are written as qDebug() would.
template <typename... Details> void require(bool holds, const char *promise, const Details &...details)
{
    if (!holds) {
        QString text;
        (QDebug(&text) << ... << details);
        breakPromise(promise, text);
    }
}

/// A text of UTF-8, in which two of the control characters stand for the halves of a surrogate pair.
QString consumeText(FuzzedDataProvider &data, std::size_t longest = 40);

/// A number, often one at which code is known to break.
double consumeNumber(FuzzedDataProvider &data);
