#pragma once

#include <QtGlobal>

namespace tarn::test {

/// Whether the tests that grow with time are to take theirs: TARN_LONG_TESTS=1.
inline bool long_tests()
{
    return qEnvironmentVariableIntValue("TARN_LONG_TESTS") != 0;
}

/// How often a test tries something.
inline int times(int usually, int in_long_tests)
{
    return long_tests() ? in_long_tests : usually;
}

} // namespace tarn::test
