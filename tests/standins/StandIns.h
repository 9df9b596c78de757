#pragma once

#include <gtest/gtest.h>

namespace standins {

// Begins with every stand-in as it was at the start, and without a quake list.
class Test : public ::testing::Test {
  protected:
    Test();
};

}  // namespace standins
