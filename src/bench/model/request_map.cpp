#include "bench/model/request_map.h"

namespace bitlux {

RequestMap::RequestMap(ModelStore& store) : store_(store) {
    for (const chips::Register& owner : store.chip().registers) {
        if (owner.writable())
            written_[owner.address].push_back(&owner);
        for (const chips::View& view : owner.views) {
            views_[{view.operation, view.address}].push_back(
                {.owner = &owner, .view = &view, .value = &store.of(owner, view)});
            selecting_[view.operation] |= view.extra;
        }
        if (!owner.reply.empty())
            findReply(owner);
    }
}

std::optional<Request> RequestMap::request(std::uint64_t word) const {
    const chips::WordFormat& format = store_.chip().word;
    std::optional<chips::Operation> operation = format.operationOf(word);
    if (!operation)
        return std::nullopt;
    const std::uint64_t address = format.address.taken(word);
    if (format.write == format.read && operation != chips::Operation::Flags) // by the address
        operation = written_.contains(address) ? chips::Operation::Write : chips::Operation::Read;
    return Request{
        .operation = *operation, .address = address, .data = format.data.taken(word), .word = word};
}

const ShownView* RequestMap::viewOf(const Request& request) const {
    const auto found = views_.find({request.operation, request.address});
    if (found == views_.end())
        return nullptr;
    const std::uint64_t selector = request.data & selecting_.at(request.operation);
    const ShownView* plain = nullptr;
    for (const ShownView& any : found->second) {
        if (isAskedFor(*any.view, selector))
            return &any;
        if (any.view->extra == 0)
            plain = &any;
    }
    return request.operation == chips::Operation::Read ? plain : nullptr;
}

bool RequestMap::isAskedFor(const chips::View& view, std::uint64_t selector) const {
    const std::uint64_t tooLate =
        store_.chip().word.answersNext ? 0 : (std::uint64_t{1} << (view.row.width() - 1)) - 1;
    return ((view.extra ^ selector) & ~tooLate) == 0;
}

const chips::Register* RequestMap::registerOf(const Request& request) const {
    const auto found = written_.find(request.address);
    if (found == written_.end())
        return nullptr;
    if (found->second.size() == 1)
        return found->second.front();
    std::uint64_t selecting = 0;
    for (const chips::Register* any : found->second)
        selecting |= any->alwaysWritten;
    for (const chips::Register* any : found->second)
        if ((request.data & selecting) == any->alwaysWritten)
            return any;
    return nullptr;
}

void RequestMap::findReply(const chips::Register& written) {
    const auto take = [&](const chips::Register& owner, const chips::View& view) {
        replies_[&written] = {.owner = &owner, .view = &view, .value = &store_.of(owner, view)};
    };
    if (const chips::View* own = written.find(written.reply))
        return take(written, *own);
    for (const chips::Register& owner : store_.chip().registers) {
        if (const chips::View* view = owner.find(written.reply))
            return take(owner, *view);
        if (owner.title == written.reply && !owner.views.empty())
            return take(owner, owner.views.front());
    }
}

const ShownView* RequestMap::plainViewOf(const chips::Register& owner) const {
    const auto found = views_.find({chips::Operation::Read, owner.address});
    if (found == views_.end())
        return nullptr;
    for (const ShownView& any : found->second)
        if (any.owner == &owner && any.view->extra == 0 && !any.view->ownValue())
            return &any;
    return nullptr;
}

} // namespace bitlux
