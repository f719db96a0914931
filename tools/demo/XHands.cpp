#include "demo/XHands.h"

#include "selvane/display/DisplayManager.h"

#include <cmath>

namespace demo {

void XHands::moveMouse(sv::Vector to) {
    const sv::Vector pixel = sv::spacesToPixels(to);
    server.movePointer(static_cast<int>(std::lround(pixel.x)),
                       static_cast<int>(std::lround(pixel.y)));
}

std::string XHands::nameOf(sv::Keyboard::Key key) {
    if (key == sv::Keyboard::SPACE)
        return "space";
    return {static_cast<char>('a' + key - sv::Keyboard::A)};
}

} // namespace demo
