#include "apps/chip/register_options.h"

#include "apps/duration.h"
#include "apps/examples.h"

#include <limits>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace bitlux {

namespace {

using Task = RegisterOptions::Task;

constexpr const char* chipHelp = "Name of a chip, or a file (*.toml)";

class Adder {
public:
    Adder(CLI::App& chip, RegisterOptions& options) : chip_(chip), options_(options) {}

    /// A command without a bus.
    CLI::App& plain(const char* name, const char* purpose, Task task) {
        CLI::App& made = *chip_.add_subcommand(name, purpose);
        made.final_callback([this_ = &options_, task] { this_->task = task; });
        return made;
    }
    /// A command that sends words.
    CLI::App& sending(const char* name, const char* purpose, Task task) {
        CLI::App& made = *chip_.add_subcommand(name, purpose);
        addWiringOptions(made, options_.shape);
        const std::function<void()> check = addCommandOptions(
            made, options_.command,
            "Send through the dongle or the parallel port; without it through the dongle when "
            "there is one, on the virtual bench through the port");
        made.final_callback([options = &options_, task, check] {
            check();
            options->task = task;
        });
        return made;
    }
    void takeChip(CLI::App& command) const {
        command.add_option("CHIP", options_.chip, chipHelp)->required();
    }

private:
    CLI::App& chip_;
    RegisterOptions& options_;
};

void addRead(Adder& add, RegisterOptions& options) {
    CLI::App& read = add.sending("read", "Read registers by name, with their fields", Task::Read);
    add.takeChip(read);
    read.add_option("REGISTER", options.names,
                    "Registers or flags; without them all that a read does not clear");
    addExpectedFields(read, options.expect);
    addExamples(read,
                {"bitlux chip read zt72516 INIT TIMER --bench zt72516",
                 "bitlux chip read zt72516 'Mode Flags' --expect 'FSM State 0=1' --within 500ms"});
}

void addWrite(Adder& add, RegisterOptions& options) {
    CLI::App& write =
        add.sending("write", "Change fields of registers: read, change, write", Task::Write);
    add.takeChip(write);
    write
        .add_option("CHANGE", options.names,
                    "REGISTER.FIELD=VALUE with a number or a text of the field, REGISTER=VALUE, or "
                    "REGISTER with --raw")
        ->required();
    CLI::Option& fromReset = *write.add_flag(
        "--from-reset", options.fromReset,
        "Start from the reset value, without a read; fields that are not named get theirs");
    write.add_option("--raw", options.raw, "The whole value of the register")
        ->type_name("NUMBER")
        ->excludes(&fromReset);
    write.add_flag("--verify", options.verify, "Read back; exit code 3 where it did not take");
    addExamples(write, {"bitlux chip write zt72516 INIT.WD_spi=1 'INIT.VAUX 3/5=VAUX = 5V'",
                        "bitlux chip write zt72516 AMUX --raw 0x12 --verify"});
}

void addSnapshots(Adder& add, RegisterOptions& options) {
    CLI::App& dump = add.sending("dump", "Read all registers into a snapshot", Task::Dump);
    add.takeChip(dump);
    dump.add_option("-o,--output", options.file, "The file; without it the snapshot is printed")
        ->type_name("FILE.toml");
    dump.add_flag("--all", options.all, "Also what a read clears");
    CLI::App& diff = add.sending(
        "diff", "Compare two snapshots, or one with the chip; exit code 3 if they differ",
        Task::Diff);
    diff.add_option(
            "CHIP|FILE", options.names,
            "BEFORE.toml AFTER.toml, or CHIP BEFORE.toml for the chip now, or CHIP and both")
        ->required()
        ->expected(2, 3);
    CLI::App& load = add.sending(
        "load", "Write the registers in which the chip differs from a snapshot", Task::Load);
    add.takeChip(load);
    load.add_option("FILE", options.file, "A snapshot (*.toml)")->required();
    load.add_flag("--verify", options.verify, "Read back; exit code 3 where it did not take");
    addExamples(dump, {"bitlux chip dump zt72516 -o before.toml"});
    addExamples(
        diff, {"bitlux chip diff before.toml after.toml", "bitlux chip diff zt72516 before.toml"});
    addExamples(load, {"bitlux chip load zt72516 before.toml --verify"});
}

void addDecode(Adder& add, RegisterOptions& options) {
    CLI::App& decode =
        add.plain("decode", "Tell what a word means to a chip, field by field", Task::Decode);
    add.takeChip(decode);
    decode.add_option("WORD", options.names, "A word and, if you have it, its answer, hexadecimal")
        ->required()
        ->expected(1, 2);
    decode.add_flag("--json", options.command.outputs.json, "Print objects of JSON, one a line");
    addExamples(decode, {"bitlux chip decode zt72516 43001A2B"});
}

void addWatch(Adder& add, RegisterOptions& options) {
    CLI::App& watch =
        add.sending("watch", "Read registers again and again, and print changes", Task::Watch);
    add.takeChip(watch);
    watch.add_option("REGISTER", options.names, "Registers or flags")->required();
    constexpr std::int64_t usual = 200'000'000;
    options.every = usual;
    addDuration(watch, "--every", options.every, "Time between two reads").default_str("200ms");
    watch.add_option("--times", options.times, "Read so many times; without it until Ctrl-C")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description("NUMBER"));
    addExamples(watch, {"bitlux chip watch zt72516 TIMER MODE --every 200ms"});
}

} // namespace

void addRegisterCommands(CLI::App& chip, RegisterOptions& options) {
    Adder add(chip, options);
    addRead(add, options);
    addWrite(add, options);
    addSnapshots(add, options);
    addDecode(add, options);
    addWatch(add, options);
}

} // namespace bitlux
