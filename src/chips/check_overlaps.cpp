#include "chips/findings.h"

#include <map>
#include <vector>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

/// The words that writes of a register can be: constant bits, and the others.
struct Writes {
    const Register* owner = nullptr;
    std::uint64_t fixed = 0; ///< mask
    std::uint64_t value = 0; ///< of those bits
};

class OverlapsCheck {
public:
    explicit OverlapsCheck(const Findings& found) : found_(found), word_(found.chip.word) {}

    void run() {
        for (const Register& any : found_.chip.registers)
            if (any.address <= word_.address.largest())
                take(any);
        checkRequests();
    }

private:
    [[nodiscard]] Writes writesOf(const Register& any) const {
        const std::uint64_t free =
            word_.data.placed(any.mask() & ~any.neverWritten & ~any.alwaysWritten) |
            word_.check.place.mask();
        return {.owner = &any,
                .fixed = word_.mask() & ~free,
                .value = word_.word(Operation::Write, any.address, any.alwaysWritten) & ~free};
    }

    void take(const Register& any) {
        if (!any.writable() || !any.writeButton.exists())
            return;
        const Writes made = writesOf(any);
        std::vector<Writes>& sameAddress = writes_[any.address];
        for (const Writes& other : sameAddress)
            if (((made.value ^ other.value) & made.fixed & other.fixed) == 0) {
                found_.add(any.at,
                           fmt::format("\"{}\" is written by the words of \"{}\" in line {}",
                                       any.title, other.owner->title, other.owner->at.line),
                           "Give them different addresses.");
                break;
            }
        sameAddress.push_back(made);
    }

    void checkRequests() {
        for (const Register& any : found_.chip.registers)
            for (const View& view : any.views)
                if (view.row.form == any.row.form && // else the same view, shown again
                    view.address <= word_.address.largest())
                    checkRequest(any, view);
    }

    void checkRequest(const Register& any, const View& view) {
        const std::uint64_t word = word_.word(view.operation, view.address, view.extra);
        const auto [found, isNew] = requests_.emplace(word, &view);
        if (!isNew)
            found_.add(view.at,
                       fmt::format("\"{}\" of \"{}\" is read by the word of the view in line {}",
                                   view.title, any.title, found->second->at.line),
                       "Give it another `address` or `extra`.");
        const auto writes = writes_.find(view.address);
        if (writes == writes_.end() || isReported_)
            return;
        for (const Writes& other : writes->second)
            if (((word ^ other.value) & other.fixed) == 0) {
                found_.add(word_.at,
                           fmt::format("`{}` and `write` are the same word, as for \"{}\"",
                                       view.operation == Operation::Flags ? "flags" : "read",
                                       other.owner->title),
                           "Give each operation bits of its own.");
                isReported_ = true; // the same fault concerns all registers
                return;
            }
    }

    const Findings& found_;
    const WordFormat& word_;
    std::map<std::uint64_t, std::vector<Writes>> writes_; ///< by address
    std::map<std::uint64_t, const View*> requests_;       ///< by word
    bool isReported_ = false;
};

} // namespace

void checkOverlaps(const Findings& found) {
    OverlapsCheck(found).run();
}

} // namespace bitlux::chips
