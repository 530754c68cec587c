// How a test says that it cannot hold for the binary that ships.
#pragma once

#include "Subject.h"

#include <gtest/gtest.h>

// Leaves a test that cannot hold for the binary that ships; GoogleTest counts it as skipped. `why` is a text.
#define SKIP_FOR_SHIPPED_BINARY(why)                                                                                   \
    if (::Tarvik::Vorn::Test::SubjectIsShippedBinary()) {                                                              \
        GTEST_SKIP() << "not for the binary that ships: " << why;                                                      \
    }                                                                                                                  \
    static_assert(true)
