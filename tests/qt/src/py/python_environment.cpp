#include <pybind11/embed.h>

#include <gtest/gtest.h>

#include <optional>

namespace {

/// An interpreter on the thread of the tests, for all tests of an executable.
class PythonEnvironment : public testing::Environment
{
public:
    void SetUp() override { m_interpreter.emplace(false); }
    void TearDown() override { m_interpreter.reset(); }

private:
    std::optional<pybind11::scoped_interpreter> m_interpreter;
};

[[maybe_unused]] const testing::Environment *const environment =
    testing::AddGlobalTestEnvironment(new PythonEnvironment); // owned by the test framework

} // namespace
