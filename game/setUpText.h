/// What the game's texts have in common.
#pragma once

#include "selvane/world/ViewObject.h"

#include <string>

/// Makes a new view object show a text at a location, in white and without its value, and asks for
/// the keys.
void setUpText(sv::ViewObject &screen, sv::ViewObjectLocation location, const std::string &text);
