#include "selvane/loop/FramePace.h"

#include "selvane/core/Clock.h"
#include "selvane/platform/ManualTime.h"
#include "support/EngineTest.h"

#include <climits>

namespace sv {
namespace {

constexpr long long hour_ms = 3'600'000;

struct Step {
    long long work_ms;          // How far the wall clock moves until the step's end.
    long long sleep_error_ms;   // How far it moves in the sleep beyond what was asked for.
    std::vector<int> sleeps;    // What should be asked for, if anything.
    std::string complaint = ""; // What stands behind "Can't keep up! ".
};

struct Pace : test::EngineTest {
    Pace() { startLog(); }

    void play(const char *name, int frame_time, const std::vector<Step> &steps) {
        SCOPED_TRACE(name);
        FramePace pace(frame_time);
        Clock clock;
        for (int count = 0; const Step &step : steps) {
            SCOPED_TRACE("step " + std::to_string(count));
            said();
            time.sleeps.clear();
            clock.delta();
            time.now_ms += step.work_ms;
            time.during_sleep = [&] { time.now_ms += step.sleep_error_ms; };
            pace.endStep(clock, count++);
            EXPECT_EQ(time.sleeps, step.sleeps);
            const std::string line = "GameManager::run(): Can't keep up! " + step.complaint + "\n";
            EXPECT_EQ(said(), step.complaint.empty() ? "" : line);
        }
    }

    ManualTime time;
};

TEST_F(Pace, a_step_sleeps_what_its_work_and_the_last_oversleep_left) {
    play("an oversleep shortens the next step alone", 33,
         {{10, 4, {23}}, {10, 0, {19}}, {10, 0, {23}}});
    play("a sleep that ends early is no debt", 33, {{10, -5, {23}}, {0, 0, {33}}, {32, 0, {1}}});
    play("an overrun is told, but not of the first step", 33,
         {{40, 0, {}},
          {33, 0, {}, "frame_time 33 ms, split 33 ms"},
          {1040, 0, {}, "frame_time 33 ms, split 1040 ms"},
          {10, 0, {23}}});
    play("an overrun after an oversleep is not told, and ends the correction", 33,
         {{10, 30, {23}},
          {10, 0, {}},
          {10, 1, {23}},
          {50, 0, {}},
          {50, 0, {}, "frame_time 33 ms, split 50 ms"}});
    play("frame time 0", 0, {{0, 0, {}}, {50, 0, {}}});
    play("frame time 1", 1,
         {{0, 0, {1}}, {1, 0, {}, "frame_time 1 ms, split 1 ms"}, {0, 1, {1}}, {0, 0, {}}});
    play("the longest frame time", INT_MAX, {{10, 0, {INT_MAX - 10}}, {10, 0, {INT_MAX - 10}}});
}

TEST_F(Pace, a_wall_clock_that_is_set_never_costs_more_than_a_frame) {
    time.now_ms = 48 * hour_ms;
    play("back in a step", 33, {{-500, 0, {33}}, {10, 0, {23}}});
    play("back an hour in a step", 33,
         {{0, 0, {33}}, {-hour_ms, 0, {}, "frame_time 33 ms, split 694967 ms"}, {10, 0, {23}}});
    play("forward an hour in a step", 33, {{hour_ms, 0, {33}}, {10, 0, {23}}});
    play("back in a sleep", 33, {{10, -500, {23}}, {10, 0, {23}}});
    play("back an hour in a sleep", 33, {{10, -hour_ms, {23}}, {10, 0, {}}, {10, 0, {23}}});
    play("forward in a sleep", 33, {{10, 20'000, {23}}, {10, 0, {}}, {10, 0, {23}}});
}

TEST_F(Pace, network_and_paths_get_shares_of_a_step) {
    EXPECT_EQ(FramePace(33).networkBudget(), 6'600) << "a fifth";
    // What single precision makes of it.
    EXPECT_EQ(FramePace(INT_MAX).networkBudget(), 429'496'729'600);
    const struct {
        int frame_time, split_us, milliseconds;
    } cases[] = {
        {33, 0, 31},
        {33, 31'000, 1},
        {33, INT_MAX, -2'040'078},
        {33, INT_MIN, 31},
        {141'300, 0, 134'234}, // One more in double precision.
        {INT_MAX, 0, 2'040'109'440},
    };
    for (const auto &c : cases)
        EXPECT_EQ(FramePace(c.frame_time).pathBudget(c.split_us), c.milliseconds)
            << c.frame_time << " ms, " << c.split_us << " us";
    FramePace pace(33);
    time.oversleep_ms = 20;
    pace.endStep(Clock(), 0);
    EXPECT_EQ(pace.pathBudget(0), 12) << "95 % of 13, as the oversleep is taken from it";
}

TEST_F(Pace, the_clock_wraps_after_71_minutes) {
    const struct {
        long long start_ms, end_ms;
        int split;
    } cases[] = {
        {3'794'313, 3'794'318, 5'000}, // Over the wrap.
        {0, 40 * 60'000, -1'894'967'296},
        {0, 72 * 60'000, 25'032'704},
        {5'000, 4'993, -7'000}, // Set back.
        {24 * hour_ms - 1, 24 * hour_ms + 1, 2'000},
        {31 * 24 * hour_ms - 10, 5, 1'659'607'704}, // Into the next month.
    };
    for (const auto &c : cases) {
        time.now_ms = c.start_ms;
        Clock clock;
        time.now_ms = c.end_ms;
        EXPECT_EQ(clock.split(), c.split);
        EXPECT_EQ(clock.delta(), static_cast<unsigned>(c.split));
        EXPECT_EQ(clock.split(), 0) << "not restarted";
    }
}

} // namespace
} // namespace sv
