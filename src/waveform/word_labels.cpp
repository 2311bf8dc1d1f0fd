#include "waveform/word_labels.h"

#include <algorithm>

namespace bitlux {

namespace {

std::string shownField(const NamedField& field, std::uint64_t code) {
    const bool isFlag =
        field.bits.size() == 1 && field.textOf(0).empty() && field.textOf(1).empty();
    return isFlag ? field.name : field.name + " = " + field.shortTextOf(code);
}

/// The bits of a field may lie apart in the word: each stretch says what the field says.
void addSpans(WordLabels& labels, const NamedField& field, const chips::BitList& data,
              std::uint64_t value) {
    std::vector<int> places;
    for (int k = 0; k < field.bits.size(); ++k)
        if (field.bits.at(k) < data.size())
            places.push_back(data.at(field.bits.at(k)));
    std::sort(places.rbegin(), places.rend());
    const std::string text = shownField(field, field.bits.taken(value));
    for (std::size_t i = 0; i < places.size(); ++i)
        if (i > 0 && places[i - 1] == places[i] + 1)
            labels.spans.back().low = places[i];
        else
            labels.spans.push_back({.high = places[i], .low = places[i], .text = text});
}

void addFields(WordLabels& labels, const RegisterItem& item, const chips::BitList& data,
               std::uint64_t value) {
    for (const NamedField& any : item.fields)
        if (any.appliesTo(value))
            addSpans(labels, any, data, value);
    std::sort(labels.spans.begin(), labels.spans.end(),
              [](const auto& one, const auto& other) { return one.high > other.high; });
}

} // namespace

std::uint64_t sentNumber(const Waveform& word) {
    std::uint64_t number = 0;
    for (const WaveBit& bit : word.bits)
        if (bit.sent && bit.number < 64)
            number |= std::uint64_t{1} << bit.number;
    return number;
}

WordLabels labelsOfWord(const WordDecoder& decoder, const Waveform& word) {
    if (!decoder.fits(word.length))
        return {};
    const DecodedWord decoded = decoder.decode(sentNumber(word));
    WordLabels labels{.title = decoded.title(), .spans = {}};
    if (decoded.kind == DecodedWord::Kind::Write)
        addFields(labels, *decoded.item, decoder.format().data, decoded.value);
    return labels;
}

WordLabels labelsOfAnswer(const WordDecoder& decoder, const Waveform& word,
                          std::optional<std::uint64_t> before) {
    const bool isWhole = std::all_of(word.bits.begin(), word.bits.end(),
                                     [](const WaveBit& bit) { return bit.received.has_value(); });
    if (!decoder.fits(word.length) || !isWhole)
        return {};
    const std::optional<std::uint64_t> request =
        decoder.format().answersNext ? before : std::optional(sentNumber(word));
    if (!request)
        return {};
    std::uint64_t answer = 0;
    for (const WaveBit& bit : word.bits)
        answer |= std::uint64_t{*bit.received ? 1U : 0U} << bit.number;
    const DecodedWord decoded = decoder.decode(*request);
    const std::optional<std::uint64_t> value = decoder.valueIn(decoded, answer);
    if (!value)
        return {};
    WordLabels labels{.title = decoded.item->name, .spans = {}};
    addFields(labels, *decoded.item, decoder.format().data, *value);
    return labels;
}

} // namespace bitlux
