#pragma once

#include <chrono>
#include <thread>

namespace test {

/// Asks until it is so, which may take the system a while; false if it does not come.
template<typename Condition>
bool waitUntil(const Condition &is_so) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!is_so()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace test
