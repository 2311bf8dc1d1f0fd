#pragma once

#include "bench/model/model_store.h"

#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace bitlux {

/// A word as the chip understands it.
struct Request {
    chips::Operation operation = chips::Operation::Write;
    std::uint64_t address = 0;
    std::uint64_t data = 0;
    std::uint64_t word = 0; ///< whole, as it came
};

/// A view, whose it is, and what it shows.
struct ShownView {
    const chips::Register* owner = nullptr;
    const chips::View* view = nullptr;
    std::uint64_t* value = nullptr;
};

/// Finds what a request means.
///
/// Bits that some view of the chip has set in its request tell the views of one address from each
/// other. A read that fits none of them reads the view that asks for no such bits; flags that fit
/// none are not there. Where the answer comes during the same word, bits that follow the first one
/// of the answer come too late to tell anything. Registers at one address are told apart by the
/// bits that a write always sets; where there is only one, it takes every write.
class RequestMap {
public:
    explicit RequestMap(ModelStore& store);

    [[nodiscard]] std::optional<Request> request(std::uint64_t word) const;
    /// Null when there is none.
    [[nodiscard]] const ShownView* viewOf(const Request& request) const;
    [[nodiscard]] const chips::Register* registerOf(const Request& request) const;
    /// The view that shows the answer to a write of a register; null when there is none.
    [[nodiscard]] const ShownView* replyOf(const chips::Register& written) const {
        const auto found = replies_.find(&written);
        return found != replies_.end() ? &found->second : nullptr;
    }
    /// The view that shows what a register holds; null when there is none.
    [[nodiscard]] const ShownView* plainViewOf(const chips::Register& owner) const;

private:
    using Key = std::pair<chips::Operation, std::uint64_t>; ///< with the address

    /// Whether the data bits `told` of a request ask for a view.
    [[nodiscard]] bool isAskedFor(const chips::View& view, std::uint64_t told) const;
    /// The view of this title, of the register itself if it has one, or the first of a register.
    void findReply(const chips::Register& written);

    ModelStore& store_;
    std::map<Key, std::vector<ShownView>> views_;
    std::map<std::uint64_t, std::vector<const chips::Register*>> written_; ///< by address
    std::map<const chips::Register*, ShownView> replies_;
    std::map<chips::Operation, std::uint64_t> telling_; ///< bits that tell views apart
};

} // namespace bitlux
