#include "selvane/outside/Tape.h"

#include "selvane/outside/packing.h"

#include <algorithm>
#include <utility>

namespace sv {

namespace {

/// More equal answers in one step are taken for damage: no game asks so often.
constexpr std::uint64_t most_answers = 1 << 28;
constexpr std::int64_t millisecond = 1000;

} // namespace

void Tape::put(Channel channel, std::int64_t answer) {
    std::vector<Run> &runs = answersOf(channel).runs;
    if (runs.empty() || runs.back().answer != answer)
        runs.push_back({answer, 0});
    ++runs.back().count;
}

void Tape::putText(Channel channel, std::string text) {
    answersOf(channel).texts.push_back(std::move(text));
}

std::int64_t Tape::take(Channel channel) {
    Answers &from = answersOf(channel);
    if (from.next_run == from.runs.size()) {
        ++from.overdrawn;
        return -1;
    }
    const Run &run = from.runs[from.next_run];
    if (++from.taken == run.count) {
        ++from.next_run;
        from.taken = 0;
    }
    return run.answer;
}

std::int64_t Tape::takeTime() {
    const std::int64_t time = take(Channel::CLOCK);
    const Answers &from = answersOf(Channel::CLOCK);
    if (from.overdrawn == 0)
        return time;
    return (from.runs.empty() ? 0 : from.runs.back().answer) + from.overdrawn * millisecond;
}

std::string Tape::takeText(Channel channel) {
    Answers &from = answersOf(channel);
    if (from.next_text < from.texts.size())
        return std::move(from.texts[from.next_text++]);
    ++from.overdrawn;
    return "";
}

std::optional<Channel> Tape::findMismatch() const {
    const auto *const found = std::ranges::find_if_not(answers, &Answers::isUsedUp);
    if (found == answers.end())
        return std::nullopt;
    return static_cast<Channel>(found - answers.begin());
}

std::string Tape::pack() const {
    std::string bytes;
    for (const Answers &each : answers) {
        packNumber(bytes, each.runs.size());
        std::int64_t before = 0;
        for (const Run &run : each.runs) {
            packSigned(bytes, run.answer - before);
            packNumber(bytes, run.count);
            before = run.answer;
        }
        packNumber(bytes, each.texts.size());
        for (const std::string &text : each.texts)
            packText(bytes, text);
    }
    return bytes;
}

bool Tape::unpack(std::string_view &bytes) {
    clear();
    return std::all_of(answers.begin(), answers.end(),
                       [&](Answers &each) { return unpack(bytes, each); });
}

bool Tape::unpack(std::string_view &bytes, Answers &into) {
    std::uint64_t before = 0;
    for (auto left = unpackNumber(bytes).value_or(0); left > 0; --left) {
        const auto difference = unpackSigned(bytes);
        const auto count = unpackNumber(bytes);
        if (!difference || !count || *count == 0 || *count > most_answers)
            return false;
        before += static_cast<std::uint64_t>(*difference);
        into.runs.push_back({static_cast<std::int64_t>(before), *count});
    }
    const auto text_count = unpackNumber(bytes);
    for (auto left = text_count.value_or(0); left > 0; --left) {
        const auto text = unpackText(bytes);
        if (!text)
            return false;
        into.texts.emplace_back(*text);
    }
    return text_count.has_value();
}

} // namespace sv
