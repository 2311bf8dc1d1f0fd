#include "transfer/adapter_bus.h"

#include <algorithm>
#include <cmath>

namespace bitlux {

const std::vector<Adapter>& AdapterBus::search() {
    if (host_ != nullptr)
        found_ = host_->find();
    return found_;
}

const Adapter* AdapterBus::named(std::string_view name) const {
    const auto found = std::find_if(found_.begin(), found_.end(),
                                    [&](const Adapter& adapter) { return adapter.name() == name; });
    return found == found_.end() ? nullptr : &*found;
}

void AdapterBus::use(const Adapter& adapter) {
    if (host_ == nullptr || (port_ && port_->adapter() == adapter))
        return;
    leave();
    port_.emplace(*host_, adapter);
    port_->opened.subscribe([this](double rate) {
        session_.AdapterClock = static_cast<std::int32_t>(std::lround(rate));
    });
    pins_.use(*port_);
    session_.AdapterInUse = adapter.name();
}

void AdapterBus::leave() {
    pins_.use(pins_.machinePort());
    port_.reset();
    session_.AdapterInUse.clear();
    session_.AdapterClock = 0;
}

} // namespace bitlux
