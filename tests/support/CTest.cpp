#include "CTest.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

class CFunctionTest : public testing::Test {
public:
    explicit CFunctionTest(void (*run)()) : m_Run(run) {}
    void TestBody() override { m_Run(); }

private:
    void (*m_Run)();
};

void Fail(const std::string& message, const char* file, int line) {
    GTEST_MESSAGE_AT_(file, line, message.c_str(), testing::TestPartResult::kNonFatalFailure);
}

std::string Quoted(const wchar_t* text) {
    return text != nullptr ? testing::PrintToString(std::wstring(text)) : "null";
}

} // namespace

void CTestRegister(const char* suite, const char* name, const char* file, int line, void (*run)()) {
    testing::RegisterTest(suite, name, nullptr, nullptr, file, line,
                          [run]() -> testing::Test* { return new CFunctionTest(run); });
}

int CTestRegistered() {
    return CKXMemoryManager::Instance()->GetCount();
}

int CTestTrue(int met, const char* text, const char* file, int line) {
    if (!met) {
        Fail(std::string("not met: ") + text, file, line);
    }
    return met;
}

int CTestInt(int64_t expected, int64_t actual, const char* text, const char* file, int line) {
    if (expected != actual) {
        Fail(std::string(text) + " is " + std::to_string(actual) + ", expected " + std::to_string(expected), file,
             line);
    }
    return expected == actual;
}

int CTestNear(double expected, double actual, double tolerance, const char* text, const char* file, int line) {
    const bool met = std::fabs(expected - actual) <= tolerance;
    if (!met) {
        Fail(std::string(text) + " is " + testing::PrintToString(actual) + ", expected " +
                 testing::PrintToString(expected),
             file, line);
    }
    return met;
}

int CTestText(const wchar_t* expected, const wchar_t* actual, const char* text, const char* file, int line) {
    const bool met = expected != nullptr && actual != nullptr && std::wstring(expected) == actual;
    if (!met) {
        Fail(std::string(text) + " is " + Quoted(actual) + ", expected " + Quoted(expected), file, line);
    }
    return met;
}
