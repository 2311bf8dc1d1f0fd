#include "panels/common/register_pages.h"

#include "panels/common/field_text.h"
#include "platform/conversions.h"

#include <algorithm>

namespace bitlux {

namespace {

constexpr const char* sequenceCaption = ">SEQ";

int fieldValue(const oldchips::OptionField& field, std::uint32_t value) {
    return static_cast<int>(value >> field.lowBit & ((1U << field.width) - 1));
}

bool holds(const oldchips::OptionField& field, int bit) {
    return bit >= field.lowBit && bit < field.lowBit + field.width;
}

bool holds(const oldchips::ComboField& field, int bit) {
    return std::find(field.bitOfIndexBit.begin(), field.bitOfIndexBit.end(), bit) !=
           field.bitOfIndexBit.end();
}

int fieldIndex(const oldchips::ComboField& field, std::uint32_t value) {
    unsigned index = 0;
    for (std::size_t k = 0; k < field.bitOfIndexBit.size(); ++k)
        index |= (value >> field.bitOfIndexBit[k] & 1) << k;
    return static_cast<int>(index);
}

} // namespace

RegisterPages::RegisterPages(PanelControls& controls, RegisterWords& words,
                             std::span<const oldchips::Register> table)
    : controls_(controls), words_(words) {
    for (const oldchips::Register& row : table)
        add(row);
}

void RegisterPages::add(const oldchips::Register& added) {
    if (controls_.find({added.writeLabels, 0}) == nullptr)
        addWriteRow(added);
    const LabelRow& row = controls_.row(added.writeLabels);
    for (const oldchips::CheckBit& check : added.checks)
        addCheck(check, row);
    for (const oldchips::OptionField& field : added.options)
        addOptions(field, row);
    for (const oldchips::ComboField& field : added.combos)
        addCombo(field, row);
    addButton(added.writeButton, added.writeCaption, words_.writeText(added),
              [this, &added] { write(added); });
    addButton(added.sequenceButton, sequenceCaption, writeLine(added),
              [this, &added] { words_.append(writeLine(added), hex(value(added))); });
    addView(added, added.low, RegisterView::Low);
    addView(added, added.high, RegisterView::High);
}

void RegisterPages::addWriteRow(const oldchips::Register& added) {
    const LabelRow& row = controls_.addRow(added.writeLabels, added.writeCaptions);
    for (int bit = 0; bit < row.size(); ++bit)
        controls_.onClick({added.writeLabels, bit}, [this, &added, &row, bit] {
            row.set(bit, !row.lit(bit));
            follow(added, bit);
        });
}

void RegisterPages::follow(const oldchips::Register& changed, int bit) {
    const LabelRow& row = controls_.row(changed.writeLabels);
    for (const oldchips::CheckBit& check : changed.checks)
        if (check.bit == bit)
            controls_.get<forms::CheckBox>(check.box).setValue(row.lit(bit) ? 1 : 0);
    for (const oldchips::OptionField& field : changed.options)
        if (holds(field, bit))
            controls_
                .get<forms::OptionButton>(
                    {field.options, field.firstOption + fieldValue(field, row.value())})
                .setValue(true);
    for (const oldchips::ComboField& field : changed.combos)
        if (holds(field, bit))
            controls_.get<forms::ComboBox>({field.combo})
                .setListIndex(fieldIndex(field, row.value()));
}

void RegisterPages::addCheck(const oldchips::CheckBit& check, const LabelRow& row) {
    forms::CheckBox& box = controls_.addBox(check.box, check.caption);
    box.setTooltip(choiceText(check));
    controls_.onClick(check.box, [&row, &box, bit = check.bit] { row.set(bit, box.checked()); });
}

void RegisterPages::addOptions(const oldchips::OptionField& field, const LabelRow& row) {
    controls_.addOptions(field.options, field.firstOption, field.captions);
    if (field.frame.exists())
        controls_.addFrame(field.frame, fieldTitle(field));
    for (int value = 0; value < static_cast<int>(field.captions.size()); ++value) {
        const oldchips::ControlName option{field.options, field.firstOption + value};
        controls_.find(option)->setTooltip(choiceText(field, value));
        controls_.onClick(option, [this, &field, &row, value] {
            for (int k = 0; k < field.width; ++k)
                row.set(field.lowBit + k, (value >> k & 1) != 0);
            if (field.mirror.exists())
                controls_.get<forms::OptionButton>({field.mirror.name, field.mirror.index + value})
                    .setValue(true);
            if (field.gate.exists())
                controls_.get<forms::CheckBox>(field.gate).setValue(1);
        });
    }
    if (field.gate.exists())
        controls_.onClick(field.gate, [this, &field] {
            const bool shown = controls_.get<forms::CheckBox>(field.gate).checked();
            for (int value = 0; value < static_cast<int>(field.captions.size()); ++value)
                controls_.find({field.options, field.firstOption + value})->setVisible(shown);
        });
}

void RegisterPages::addCombo(const oldchips::ComboField& field, const LabelRow& row) {
    const forms::ComboBox& combo = controls_.addCombo(field);
    controls_.onClick({field.combo}, [&field, &row, &combo] {
        if (combo.listIndex() < 0)
            return;
        for (std::size_t k = 0; k < field.bitOfIndexBit.size(); ++k)
            row.set(field.bitOfIndexBit[k], (combo.listIndex() >> k & 1) != 0);
    });
}

void RegisterPages::addView(const oldchips::Register& added, const oldchips::ReadView& shown,
                            RegisterView view) {
    if (!shown.exists())
        return;
    const LabelRow& row = controls_.addRow(shown.labels, shown.captions);
    addButton(shown.readButton, view == RegisterView::Low ? "Read Low" : "Read High",
              words_.readText(added, view), [this, &added, &row, view, colour = shown.litColour] {
                  row.show(words_.read(added, view), colour);
              });
    addButton(shown.sequenceButton, sequenceCaption, readLine(added, view),
              [this, &added, view] { words_.append(readLine(added, view), ""); });
}

void RegisterPages::addButton(const oldchips::ControlName& name, std::string_view caption,
                              const std::string& tooltip, PanelControls::Action action) {
    if (!name.exists())
        return;
    controls_.addButton(name, caption).setTooltip(tooltip);
    controls_.onClick(name, std::move(action));
}

} // namespace bitlux
