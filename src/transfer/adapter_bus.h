#pragma once

#include "platform/adapter.h"
#include "session/session.h"
#include "transfer/adapter_port.h"
#include "transfer/pin_layer.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// The adapters of the machine, and the one that is used instead of a parallel port.
class AdapterBus {
public:
    /// `host` is null where there can be no adapters. All outlive this.
    AdapterBus(Session& session, PinLayer& pins, AdapterHost* host)
        : session_(session), pins_(pins), host_(host) {}

    /// Looks for adapters. What is in use stays in use.
    const std::vector<Adapter>& search();
    /// Those of the last search.
    [[nodiscard]] const std::vector<Adapter>& found() const { return found_; }
    /// One of those by its name; null when there is none.
    [[nodiscard]] const Adapter* named(std::string_view name) const;

    /// From now on words and pins go through the adapter. It is opened when something is written.
    void use(const Adapter& adapter);
    /// From now on they go through the parallel port of the machine; the lines of the adapter that
    /// was in use become inputs.
    void leave();
    /// The port that is in use if it is an adapter, else null.
    [[nodiscard]] const AdapterPort* inUse() const { return port_ ? &*port_ : nullptr; }

private:
    Session& session_;
    PinLayer& pins_;
    AdapterHost* host_;
    std::vector<Adapter> found_;
    std::optional<AdapterPort> port_;
};

} // namespace bitlux
