#pragma once

#include <gtest/gtest.h>

namespace standins {

// Puts every stand-in back to its start and forgets the one quake list.
void reset();

class Test : public ::testing::Test {
  protected:
    Test() { reset(); }
};

}  // namespace standins
