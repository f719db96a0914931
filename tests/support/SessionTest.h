/// An engine that stands in its first step, and what it has logged.
#pragma once

#include "selvane/testing/Session.h"

#include <gtest/gtest.h>
#include <string>

namespace test {

class SessionTest : public testing::Test {
  protected:
    explicit SessionTest(const std::string &config = "")
        : session({.config = config, .log_level = 10}) {
        EXPECT_EQ(session.start(), 0);
    }

    /// How often a text stands in the log.
    int logCount(const std::string &text) const {
        const std::string log = session.log();
        int count = 0;
        for (auto at = log.find(text); at != std::string::npos; at = log.find(text, at + 1))
            ++count;
        return count;
    }

    std::string lastLine() const {
        const std::string log = session.log();
        const std::size_t before = log.rfind('\n', log.size() - 2);
        return log.substr(before + 1, log.size() - before - 2);
    }

    sv::Session session;
};

} // namespace test
