// Tests that are written in C: they register themselves and report as those of GoogleTest do.
// Layer 16: tests.
#pragma once

#include <stdint.h>
#include <wchar.h>

#ifdef __cplusplus
extern "C" {
#endif

void CTestRegister(const char* suite, const char* name, const char* file, int line, void (*run)(void));
// Each returns whether the expectation is met.
int CTestTrue(int met, const char* text, const char* file, int line);
int CTestInt(int64_t expected, int64_t actual, const char* text, const char* file, int line);
int CTestNear(double expected, double actual, double tolerance, const char* text, const char* file, int line);
// Objects of the library that are registered with the leak tracer.
int CTestRegistered(void);
int CTestText(const wchar_t* expected, const wchar_t* actual, const char* text, const char* file, int line);

#ifdef __cplusplus
}
#else

// A test: C_TEST(Suite, Name) { ... }
#define C_TEST(suite, name)                                                                                            \
    static void suite##_##name(void);                                                                                  \
    __attribute__((constructor)) static void Register_##suite##_##name(void) {                                         \
        CTestRegister(#suite, #name, __FILE__, __LINE__, suite##_##name);                                              \
    }                                                                                                                  \
    static void suite##_##name(void)

#define EXPECT(condition) CTestTrue(!!(condition), #condition, __FILE__, __LINE__)
#define EXPECT_INT(expected, actual) CTestInt((int64_t)(expected), (int64_t)(actual), #actual, __FILE__, __LINE__)
#define EXPECT_NEAR_TO(expected, actual, tolerance)                                                                    \
    CTestNear((expected), (actual), (tolerance), #actual, __FILE__, __LINE__)
#define EXPECT_TEXT(expected, actual) CTestText((expected), (actual), #actual, __FILE__, __LINE__)
// Ends the test when it is not met.
#define REQUIRE(condition)                                                                                             \
    do {                                                                                                               \
        if (!EXPECT(condition)) {                                                                                      \
            return;                                                                                                    \
        }                                                                                                              \
    } while (0)

#endif
