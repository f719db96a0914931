/// Owns the game's TCP connections, each known by its index, and turns what happens on them into
/// events. It has no connections yet.
///
/// Game-loop thread only.
#pragma once

#include "core/Manager.h"

namespace sv {

class NetworkManager : public Manager {
  public:
    static NetworkManager &getInstance();

    bool isValid(const std::string &event_type) const override;
    int startUp() override;
    void shutDown() override;

    bool isServer() const { return false; }
    int getNumConnections() const { return 0; }

    /// Takes one waiting connection: its index, -1 if there is none, -2 on an error.
    int accept() { return -2; }

    /// Tells the interested objects of a whole message that waits on a connection; how many were
    /// told, or -1.
    int genDataEvents(int /*socket_index*/) { return 0; }

  private:
    NetworkManager();
};

} // namespace sv
