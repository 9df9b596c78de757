#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/hosts/SaverHost.h"
#include "tests/program/ProcessTree.h"
#include "tests/program/Waiting.h"

constexpr TestDisplay::Area kScreen{0, 0, 1280, 720};

// Skips where the host is not installed.
class HostTest : public testing::Test {
  protected:
    explicit HostTest(const HostKind& kind) : mKind(kind) {}

    void SetUp() override {
        const std::string obstacle = SaverHost::obstacle(mKind);
        if (!obstacle.empty()) GTEST_SKIP() << obstacle;
    }

    static void expectGone(const SaverHost& host, const std::vector<pid_t>& family) {
        EXPECT_TRUE(waitUntil([&] { return std::none_of(family.begin(), family.end(), ::isRunning); }));
        EXPECT_THAT(host.remains(), testing::IsEmpty());
    }

    const HostKind& mKind;
};
