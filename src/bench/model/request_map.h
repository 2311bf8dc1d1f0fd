#pragma once

#include "bench/model/model_store.h"

#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace bitlux {

/// A word as decoded by the chip.
struct Request {
    chips::Operation operation = chips::Operation::Write;
    std::uint64_t address = 0;
    std::uint64_t data = 0;
    std::uint64_t word = 0; ///< the whole word as received
};

/// A view, its register, and its content.
struct ShownView {
    const chips::Register* owner = nullptr;
    const chips::View* view = nullptr;
    std::uint64_t* value = nullptr;
};

/// Decodes requests.
///
/// The views of one address are distinguished by the bits that any view of the chip sets in its
/// request. A read that matches none of them reads the view without such bits; flags that match
/// none do not exist. When the answer comes during the same word, bits after the first bit of the
/// answer come too late to distinguish views. Registers at one address are distinguished by the
/// bits that a write always sets; a single register accepts every write.
class RequestMap {
public:
    explicit RequestMap(ModelStore& store);

    [[nodiscard]] std::optional<Request> request(std::uint64_t word) const;
    /// Null if there is none.
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

    /// Whether the data bits `selector` of a request select a view.
    [[nodiscard]] bool isAskedFor(const chips::View& view, std::uint64_t selector) const;
    /// The view of this title, of the register itself if it has one, or the first of a register.
    void findReply(const chips::Register& written);

    ModelStore& store_;
    std::map<Key, std::vector<ShownView>> views_;
    std::map<std::uint64_t, std::vector<const chips::Register*>> written_; ///< by address
    std::map<const chips::Register*, ShownView> replies_;
    std::map<chips::Operation, std::uint64_t> selecting_; ///< bits that distinguish views
};

} // namespace bitlux
