#include "support/windowsAnswers.h"

#include "network/NetworkTest.h"
#include "selvane/core/LogManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/platform/sockets.h"

namespace sv::platform {

namespace {

TEST(WindowsErrorTexts, are_the_first_line_of_what_windows_says_as_utf8) {
    const struct {
        std::wstring said;
        std::string text;
    } cases[] = {
        {L"Connection refused.\r\n", "Connection refused."},
        {L"Zugriff verweigert: \u00fc\u20ac\U0001F600\r\nund mehr.\r\n",
         "Zugriff verweigert: \xc3\xbc\xe2\x82\xac\xf0\x9f\x98\x80"},
        {L"\u0434\u0430", "\xd0\xb4\xd0\xb0"},
        {L"\r\n", "unknown error"},
        {L"", "unknown error"},
    };
    for (const auto &each : cases) {
        test::answerErrorText(each.said);
        EXPECT_EQ(socketErrorText(10061), each.text);
    }
}

TEST(WindowsSockets, may_be_of_more_bits_than_an_int) {
    ASSERT_EQ(startSockets(), 0);
    const Socket listener = listenOn("127.0.0.1", 0, 1);
    ASSERT_GT(listener, std::int64_t{1} << 32);
    const Socket client = connectTo("127.0.0.1", localPort(listener));
    ASSERT_GT(client, std::int64_t{1} << 32);
    Socket server = no_socket;
    ASSERT_TRUE(test::waitUntil([&] { return (server = acceptFrom(listener)) != no_socket; }));
    ASSERT_EQ(send(client, "abc", 3), 3);
    ASSERT_TRUE(test::waitUntil([&] { return waitingBytes(server) == 3; }));
    char bytes[3] = {};
    EXPECT_EQ(peek(server, bytes, 3), 3);
    EXPECT_EQ(receive(server, bytes, 3), 3);
    EXPECT_EQ((std::string{bytes, 3}), "abc");
    EXPECT_FALSE(isPeerGone(server));
    EXPECT_EQ(closeSocket(client), 0);
    EXPECT_TRUE(test::waitUntil([&] { return isPeerGone(server); }));
    EXPECT_EQ(closeSocket(server), 0);
    EXPECT_EQ(closeSocket(listener), 0);
}

class WindowsTimer : public test::EngineTest {};

TEST_F(WindowsTimer, that_refuses_a_millisecond_is_a_warning_and_no_more) {
    for (const unsigned shortest : {2U, 1U}) {
        test::refuseTimersBelow(shortest);
        writeFile("sv-config.txt", "headless:true,");
        prepareLog(1);
        GameManager &game = GameManager::getInstance();
        ASSERT_EQ(game.startUp(), 0);
        game.shutDown();
        const int warnings = shortest == 2 ? 1 : 0;
        EXPECT_EQ(
            logCount("GameManager()::startUp(): Warning!  timeBeginPeriod() cannot accept 1 msec."),
            warnings);
        EXPECT_EQ(
            logCount("GameManager()::shutDown(): Warning! timeEndPeriod() cannot accept 1 msec."),
            warnings);
    }
}

} // namespace

} // namespace sv::platform
