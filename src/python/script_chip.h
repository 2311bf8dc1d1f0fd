#pragma once

#include "panels/common/chip_exchange.h"
#include "python/bindings.h"
#include "registers/register_access.h"
#include "registers/word_decoder.h"

#include <memory>
#include <string>
#include <utility>

namespace bitlux::python {

/// A chip on the bus of a bench.
class ScriptChip {
public:
    /// `chip` is a name or a file. Raises Failure as chosenChip does.
    ScriptChip(BenchHolder bench, const std::string& chip)
        : bench_(std::move(bench)),
          catalog_(chips::chosenChip(bench_->program().chipLibrary(), chip)),
          decoder_(catalog_) {}

    [[nodiscard]] ScriptBench& bench() const { return *bench_; }
    [[nodiscard]] const RegisterCatalog& catalog() const { return catalog_; }
    [[nodiscard]] const WordDecoder& decoder() const { return decoder_; }

    /// Acts on the registers; all words of one call go out in the shape of the chip.
    template <typename Action>
    auto perform(Action action) const {
        return act(*bench_, [&] {
            Program& program = bench_->program();
            ChipExchange exchange(catalog_.chip().word, program.session(), program.engine(),
                                  program.pins());
            return action(RegisterAccess(catalog_, [&](std::uint64_t word) {
                return bench_->answered([&] { return exchange(word); });
            }));
        });
    }

private:
    BenchHolder bench_;
    RegisterCatalog catalog_;
    WordDecoder decoder_;
};

} // namespace bitlux::python
