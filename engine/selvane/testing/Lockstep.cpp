#include "selvane/testing/Lockstep.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace sv {

namespace {

/// Nothing ends a thread but the process.
[[noreturn]] void giveUp(const char *what) {
    std::fprintf(stderr, "Session: Error! The program %s.\n", what);
    std::abort();
}

} // namespace

Lockstep::Lockstep(std::function<int()> new_program, int new_patience_s)
    : program(std::move(new_program)), patience_s(new_patience_s), thread([this] { run(); }) {}

Lockstep::~Lockstep() {
    is_cancelled = true;
    if (!has_ended)
        takeTurn();
    if (!has_ended)
        giveUp("has caught the exception that was to end it");
    thread.join();
}

void Lockstep::resume() {
    takeTurn();
    if (failure)
        std::rethrow_exception(std::exchange(failure, nullptr));
}

void Lockstep::takeTurn() {
    std::unique_lock lock(mutex);
    turn = Turn::PROGRAM;
    turn_changed.notify_all();
    const auto is_back = [this] { return turn == Turn::CALLER; };
    if (!turn_changed.wait_for(lock, std::chrono::seconds(patience_s), is_back))
        giveUp("has neither ended nor come for input in time");
}

void Lockstep::pause() {
    if (std::this_thread::get_id() != thread.get_id())
        return;
    std::unique_lock lock(mutex);
    turn = Turn::CALLER;
    turn_changed.notify_all();
    waitForTurn(lock);
    if (is_cancelled)
        throw Cancelled();
}

void Lockstep::run() {
    std::unique_lock lock(mutex);
    waitForTurn(lock);
    lock.unlock();
    runProgram();
    lock.lock();
    has_ended = true;
    turn = Turn::CALLER;
    turn_changed.notify_all();
}

void Lockstep::waitForTurn(std::unique_lock<std::mutex> &lock) {
    turn_changed.wait(lock, [this] { return turn == Turn::PROGRAM; });
}

void Lockstep::runProgram() {
    if (is_cancelled)
        return;
    try {
        status = program();
    } catch (const Cancelled &) {
        return;
    } catch (...) {
        failure = std::current_exception();
    }
}

} // namespace sv
