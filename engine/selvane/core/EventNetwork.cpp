#include "selvane/core/EventNetwork.h"

#include "selvane/core/LogManager.h"

namespace sv {

EventNetwork::EventNetwork(int new_label, int new_socket_index, int new_bytes)
    : Event(NETWORK_EVENT), socket_index(new_socket_index), bytes(new_bytes) {
    setLabel(new_label);
}

void EventNetwork::setLabel(int new_label) {
    if (new_label < UNDEFINED_NETWORK_LABEL || new_label > NETWORK_MESSAGE) {
        logFailure("EventNetwork::setLabel(): Undefined type (%d).", new_label);
        new_label = UNDEFINED_NETWORK_LABEL;
    }
    label = new_label;
}

} // namespace sv
