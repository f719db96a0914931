/// Hands for a real window: keys and mouse go through the X server.
#pragma once

#include "demo/GamePlayer.h"
#include "demo/XServer.h"

namespace demo {

class XHands : public Hands {
  public:
    explicit XHands(XServer &new_server) : server(new_server) {}

    void pressKey(sv::Keyboard::Key key) override { server.pressKey(nameOf(key)); }
    void releaseKey(sv::Keyboard::Key key) override { server.releaseKey(nameOf(key)); }
    void moveMouse(sv::Vector to) override;
    void pressButton() override { server.pressButton(1); }
    void releaseButton() override { server.releaseButton(1); }

  private:
    /// X's name of a letter key or of the space bar.
    static std::string nameOf(sv::Keyboard::Key key);

    XServer &server;
};

} // namespace demo
