#include "selvane/splash/splashArt.h"

#include "selvane/resources/Frame.h"
#include "selvane/resources/Sprite.h"

#include <initializer_list>

namespace sv {

namespace {

// clang-format off
// The letters leave six columns at the right: that is where the creature settles.
constexpr char slanted_name[] = "                                               "
    "       ___  ___            __        ___       "
    "     /    /    /    /  / /  / /` / /           "
    "    /    /    /    /  / /  / /` / /            "
    "   /___ /__  /    /  / /__/ / \\/ /__           "
    "     / /    /    /  / /  / / `/ /              "
    "    / /    /    \\ /  /  / /  / /               "
    "___/ /___ /___ `/   /  / /  / /___             ";

constexpr char upright_name[] = "                                               "
    " ___   ___   _     _ _    __   _ _   ___       "
    "/  _| |  _| | |   | | |  /  | | | | |  _|      "
    "| |_  | |_  | |   | | | /   | |  || | |_       "
    "|_  | |  _| | |   | | | | | | |   | |  _|      "
    "  | | | |   | |   | | | |   | ||  | | |        "
    " _| | | |_  | |_  |  /  | | | | | | | |_       "
    "|___/ |___| |___| |_/   |_|_| |_|_| |___|      ";

constexpr char wings_spread[] = "##       ##"
    "###     ###"
    "####(O)####"
    "  ###|###  "
    "   #\\|/#   "
    "     |     "
    "    / \\    ";

constexpr char wings_folded[] = "           "
    "           "
    "  ##(O)##  "
    " ####|#### "
    "####\\|/####"
    "##   |   ##"
    "#   / \\   #";

constexpr char landed[] = "    _    "
    " _-(O)-_ "
    "  _\\|/_  "
    "   -|-   "
    "    |____"
    "____/    ";
// clang-format on

/// Each frame is its rows one after another.
std::unique_ptr<Sprite> makeSprite(const char *label, Color color, int width, int height,
                                   std::initializer_list<const char *> frames) {
    auto sprite = std::make_unique<Sprite>(static_cast<int>(frames.size()));
    sprite->setLabel(label);
    sprite->setColor(color);
    sprite->setWidth(width);
    sprite->setHeight(height);
    for (const char *frame : frames)
        sprite->addFrame(Frame(width, height, frame));
    return sprite;
}

} // namespace

std::unique_ptr<Sprite> makeBanner() {
    return makeSprite("splash", GREEN, 47, 8, {slanted_name, upright_name});
}

std::unique_ptr<Sprite> makeFlyingCreature() {
    auto sprite = makeSprite("splash-selvane", BLUE, 11, 7, {wings_spread, wings_folded});
    sprite->setSlowdown(2);
    return sprite;
}

std::unique_ptr<Sprite> makeLandedCreature() {
    return makeSprite("splash-selvane", GREEN, 9, 6, {landed});
}

} // namespace sv
