#include "support/rows.h"
#include "support/usb_descriptors.h"

#include "apps/doctor_command.h"
#include "apps/list_command.h"

#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

namespace fs = std::filesystem;

const std::string usbNodeName = "/dev/bus/usb/001/004";
const std::string rulesName = "etc/udev/rules.d/70-bitlux-forge.rules";
const std::string reload = "sudo udevadm control --reload && sudo udevadm trigger";
const std::string install =
    "bitlux doctor --udev | sudo tee /etc/udev/rules.d/70-bitlux-forge.rules && " + reload;
const std::string addNumbers = "sudo mkdir -p /etc/bitlux-forge && echo 1234:abcd | "
                               "sudo tee -a /etc/bitlux-forge/dongles.conf";

const std::string addAndInstall = addNumbers + " && " + install;
const char* const unusable =
    "Usable: nothing, neither a USB dongle nor an adapter nor a parallel port.\n";

/// A machine made of files.
class MadeMachine {
public:
    MadeMachine() {
        machine.root = root.path();
        machine.dongleFiles = {root.path("etc/dongles.conf")};
        machine.adapterFiles = {root.path("etc/adapters.conf")};
        machine.user = "ann";
        machine.membership = [this](const std::string& group) {
            const auto found = memberships.find(group);
            return found == memberships.end() ? Membership::Missing : found->second;
        };
        machine.mayOpen = [this](const std::string& node) { return openable.contains(node); };
    }

    void plugDongleIn() {
        const TemporaryFolder made;
        plugIn(made, "1-2", 4, dongleDescriptors());
        fs::create_directories(root.path("sys/bus/usb"));
        fs::copy(made.path(), root.path("sys/bus/usb/devices"), fs::copy_options::recursive);
        root.write(usbNodeName.substr(1), "");
    }
    void list(const std::string& numbers) { root.write("etc/dongles.conf", numbers); }
    void bindDongle(const std::string& driver) {
        link("sys/bus/usb/devices/1-2/1-2:1.0/driver", "../../../bus/usb/drivers/" + driver);
    }
    void addPort(int number, const std::string& base) {
        root.write(fmt::format("proc/sys/dev/parport/parport{}/base-addr", number), base);
        root.write(fmt::format("proc/sys/dev/parport/parport{}/devices/active", number), "none\n");
        root.write(fmt::format("dev/parport{}", number), "");
        root.write("sys/module/parport_pc/refcnt", "");
        root.write("sys/class/ppdev/x", "");
    }
    void runProgram(int number, const std::string& name, const std::string& node) {
        const std::string folder = fmt::format("proc/{}", number);
        root.write(folder + "/comm", name + "\n");
        link(folder + "/fd/0", "/dev/null");
        link(folder + "/fd/7", node);
    }
    void link(const std::string& name, const std::string& target) {
        fs::create_directories(fs::path(root.path(name)).parent_path());
        fs::create_symlink(target, root.path(name));
    }

    int run(bool udev = false) {
        output.str("");
        errors.str("");
        return runDoctorCommand({.udev = udev}, machine, output, errors);
    }
    /// What the only line about a subject says, with its rank.
    std::string line(const std::string& subject) const {
        std::istringstream lines(output.str());
        std::string found;
        for (std::string text; std::getline(lines, text);) {
            if (text.size() < 9 || text.compare(9, subject.size() + 1, subject + " ") != 0)
                continue;
            EXPECT_EQ(found, "") << output.str();
            const std::string rest = text.substr(9 + subject.size());
            found = text.substr(2, text.find(' ', 2) - 2) + ": " +
                    rest.substr(rest.find_first_not_of(' '));
        }
        return found;
    }
    std::string verdict() const {
        const std::string text = output.str();
        return text.substr(text.rfind('\n', text.size() - 2) + 1);
    }

    TemporaryFolder root;
    Machine machine;
    std::map<std::string, Membership> memberships;
    std::set<std::string> openable;
    std::ostringstream output;
    std::ostringstream errors;
};

TEST(Doctor, TellsTheTruthOfAnEmptyMachine) {
    MadeMachine made;
    EXPECT_EQ(made.run(), 1);
    EXPECT_EQ(
        made.output.str(),
        "USB dongle\n"
        "  note   dongle         none: this system has no USB. To do: give the USB devices to "
        "this container or virtual machine, if it is one\n"
        "  note   dongles.conf   lists no device\n"
        "  note   udev rules     none; none are needed while dongles.conf lists no device\n"
        "FTDI adapter\n"
        "  note   adapter        none is plugged in\n"
        "Parallel port\n"
        "  note   parallel port  the system knows none\n"
        "  wrong  parport_pc     the driver of the ports is not loaded. To do: sudo modprobe "
        "parport_pc\n"
        "  wrong  ppdev          the driver that lets programs use the ports is not loaded. "
        "To do: sudo modprobe ppdev\n"
        "  wrong  group lp       ann is no member and may not use the ports. To do: sudo "
        "usermod -a -G lp ann, then log in again\n"
        "Usable: nothing, neither a USB dongle nor an adapter nor a parallel port.\n");
}

TEST(Doctor, SaysWhatAListedDongleLacks) {
    const std::string closed = ", but you may not open it. To do: ";
    for (const auto& [what, mayOpen, hasRule, plugdev, driver, lack] :
         Rows<const char*, bool, bool, Membership, const char*, std::string>{
             {"all well", true, true, Membership::InEffect, "", ""},
             {"no rule", false, false, Membership::InEffect, "", closed + install},
             {"at a distance", false, true, Membership::Missing, "",
              closed + "sudo usermod -a -G plugdev ann, then log in again"},
             {"just joined", false, true, Membership::NextLogin, "",
              closed + "log out and in again; this login began before you were in the group"},
             {"rule asleep", false, true, Membership::InEffect, "",
              closed + "sudo udevadm control --reload && sudo udevadm trigger"},
             {"foreign driver", true, true, Membership::InEffect, "usbserial",
              ", but the system's driver usbserial has it. To do: echo 1-2:1.0 | sudo tee "
              "/sys/bus/usb/drivers/usbserial/unbind"},
             {"hidden program", true, true, Membership::InEffect, "usbfs",
              ", but a program that you may not see holds it. To do: sudo bitlux doctor, which "
              "names the program; then close it"}}) {
        MadeMachine made;
        made.plugDongleIn();
        made.list("1234:abcd\n");
        if (mayOpen)
            made.openable.insert(usbNodeName);
        if (hasRule) {
            made.run(true);
            made.root.write(rulesName, made.output.str());
        }
        made.memberships["plugdev"] = plugdev;
        if (*driver != '\0')
            made.bindDongle(driver);
        const bool isUsable = lack.empty();
        EXPECT_EQ(made.run(), isUsable ? 0 : 1) << what;
        EXPECT_EQ(made.line(usbNodeName),
                  fmt::format("{}: 1234:abcd \"Word dongle\" is a dongle by dongles.conf{}",
                              isUsable ? "ok" : "wrong", isUsable ? " and can be opened" : lack))
            << what;
        EXPECT_EQ(made.verdict(),
                  isUsable ? "Usable: the USB dongle. The parallel port is not.\n" : unusable)
            << what;
    }
}

TEST(Doctor, NamesTheProgramsThatHoldADongle) {
    MadeMachine made;
    made.plugDongleIn();
    made.list("1234:abcd\n");
    made.openable.insert(usbNodeName);
    made.runProgram(812, "virtual\x1b[2J", usbNodeName);
    made.runProgram(97, "bitlux-forge", usbNodeName);
    made.runProgram(98, "editor", "/dev/bus/usb/001/005");
    made.root.write("proc/self/comm", "no number");
    EXPECT_EQ(made.run(), 0) << "open, but nobody has claimed it";
    made.bindDongle("usbfs");
    made.root.write("sys/bus/usb/devices/1-2/serial", "A-17\n");
    EXPECT_EQ(made.run(), 1);
    EXPECT_EQ(made.line(usbNodeName),
              "wrong: 1234:abcd \"Word dongle\", serial number A-17, is a dongle by dongles.conf, "
              "but it is held by "
              "bitlux-forge (process 97), virtual?[2J (process 812). To do: close that program");
}

TEST(Doctor, TellsOfADongleThatComesByUsbip) {
    MadeMachine made;
    made.plugDongleIn();
    made.list("1234:abcd\n");
    made.openable.insert(usbNodeName);
    const std::string remote = "sys/devices/platform/vhci_hcd.0/usb3/1-2";
    fs::create_directories(fs::path(made.root.path(remote)).parent_path());
    fs::rename(made.root.path("sys/bus/usb/devices/1-2"), made.root.path(remote));
    made.link("sys/bus/usb/devices/1-2", "../../../devices/platform/vhci_hcd.0/usb3/1-2");
    EXPECT_EQ(made.run(), 0);
    EXPECT_EQ(made.line(usbNodeName),
              "ok: 1234:abcd \"Word dongle\", from another machine by usbip, is a dongle by "
              "dongles.conf and can be opened");
    made.root.write(remote + "/serial", "A-17\n");
    EXPECT_EQ(made.run(), 0);
    EXPECT_EQ(made.line(usbNodeName),
              "ok: 1234:abcd \"Word dongle\", serial number A-17, from another machine by usbip, "
              "is a dongle by dongles.conf and can be opened");
}

TEST(Doctor, AsksADeviceThatIsNotListed) {
    enum Answer : std::uint8_t { Yes, No, NobodyAsks };
    for (const auto& [mayOpen, answer, driver, said, advice] :
         Rows<bool, Answer, const char*, const char*, std::string>{
             {true, Yes, "", "says that it is a dongle and can be opened", ""},
             {true, No, "", "is not known as a dongle", addNumbers},
             {true, NobodyAsks, "", "is not known as a dongle", addNumbers},
             {true, No, "usbserial",
              "is not known as a dongle; the system's driver usbserial has it", addNumbers},
             {false, Yes, "", "cannot be asked whether it is a dongle: you may not open it",
              addAndInstall}}) {
        MadeMachine made;
        made.plugDongleIn();
        if (mayOpen)
            made.openable.insert(usbNodeName);
        if (answer != NobodyAsks)
            made.machine.isDongle = [isOpen = mayOpen,
                                     says = answer == Yes](const UsbCandidate& candidate) {
                EXPECT_TRUE(isOpen);
                EXPECT_EQ(usbNode(candidate), usbNodeName);
                return says;
            };
        if (*driver != '\0')
            made.bindDongle(driver);
        const bool isUsable = advice.empty();
        EXPECT_EQ(made.run(), isUsable ? 0 : 1) << said;
        EXPECT_EQ(made.line(usbNodeName),
                  fmt::format("{}: 1234:abcd \"Word dongle\" {}{}{}", isUsable ? "ok" : "note",
                              said, isUsable ? "" : ". If it is one: ", advice));
    }
}

TEST(Doctor, TellsOfTheListAndTheRules) {
    MadeMachine made;
    fs::create_directories(made.root.path("sys/bus/usb/devices"));
    made.list("1234:abcd\nzz\n0001:ffff\n");
    made.run();
    EXPECT_EQ(made.line("dongle"),
              "note: none is plugged in. To do: plug it in; lsusb lists what the system sees");
    EXPECT_NE(made.output.str().find("  wrong  dongles.conf   " + made.root.path() +
                                     "/etc/dongles.conf, line 2: \"zz\" is no pair of numbers"),
              std::string::npos)
        << made.output.str();
    EXPECT_NE(made.output.str().find("  ok     dongles.conf   lists 2 kinds of device\n"),
              std::string::npos);
    EXPECT_EQ(made.line("udev rules"),
              "wrong: /etc/udev/rules.d/70-bitlux-forge.rules is missing; it gives users the right "
              "to open 1234:abcd 0001:ffff. To do: " +
                  install);

    made.memberships["plugdev"] = Membership::NotNeeded;
    made.root.write(rulesName, "# ATTR{idVendor}==\"0001\", ATTR{idProduct}==\"ffff\"\n"
                               "ATTR{idVendor}==\"0001\"\n"
                               "ATTR{idVendor}==\"1234\", ATTR{idProduct}==\"abcd\"");
    made.run();
    EXPECT_EQ(made.line("udev rules"),
              "note: /etc/udev/rules.d/70-bitlux-forge.rules has no rule for 0001:ffff. To do: " +
                  install);
}

TEST(Doctor, CountsOnTheRuleOfAPackage) {
    const std::string packaged = "usr/lib/udev/rules.d/70-bitlux-forge.rules";
    MadeMachine made;
    made.plugDongleIn();
    made.root.write(packaged, "");
    made.run();
    EXPECT_TRUE(made.line(usbNodeName).ends_with(addNumbers + " && " + reload))
        << made.line(usbNodeName);

    made.machine.dongleFiles.push_back(made.root.write("user.conf", "1234:abcd"));
    made.run();
    EXPECT_EQ(made.line("udev rules"),
              "wrong: /" + packaged + " has no rule for 1234:abcd. To do: " + install)
        << "it knows the list of the system only";

    made.list("1234:abcd");
    made.memberships["plugdev"] = Membership::InEffect;
    made.run();
    EXPECT_EQ(made.line("udev rules"), "ok: /" + packaged);
    EXPECT_TRUE(made.line(usbNodeName).ends_with("may not open it. To do: " + reload))
        << made.line(usbNodeName);

    made.root.write(rulesName, "");
    made.run();
    EXPECT_EQ(made.line("udev rules"),
              "wrong: /etc/udev/rules.d/70-bitlux-forge.rules is missing; it gives users the right "
              "to open 1234:abcd. To do: " +
                  install)
        << "an empty file of the administrator takes its place";
}

TEST(Doctor, SaysWhatAPortLacks) {
    for (const auto& [what, change, line] :
         Rows<const char*, std::function<void(MadeMachine&)>, const char*>{
             {"all well", [](MadeMachine&) {}, "ok: LPT1 at 0x378, can be opened"},
             {"no program driver",
              [](MadeMachine& made) {
                  fs::remove(made.root.path("dev/parport0"));
                  fs::remove_all(made.root.path("sys/class"));
              },
              "wrong: LPT1 at 0x378, but its node is missing. To do: sudo modprobe ppdev"},
             {"no node", [](MadeMachine& made) { fs::remove(made.root.path("dev/parport0")); },
              "wrong: LPT1 at 0x378, but its node is missing. To do: sudo udevadm trigger"},
             {"not in the group",
              [](MadeMachine& made) {
                  made.openable.clear();
                  made.memberships["lp"] = Membership::Missing;
              },
              "wrong: LPT1 at 0x378, but you may not open it. To do: sudo usermod -a -G lp "
              "ann, then log in again"},
             {"in the group too late",
              [](MadeMachine& made) {
                  made.openable.clear();
                  made.memberships["lp"] = Membership::NextLogin;
              },
              "wrong: LPT1 at 0x378, but you may not open it. To do: log out and in again; "
              "this login began before you were in the group"},
             {"odd rights", [](MadeMachine& made) { made.openable.clear(); },
              "wrong: LPT1 at 0x378, but you may not open it. To do: sudo chgrp lp "
              "/dev/parport0 && sudo chmod 660 /dev/parport0"},
             {"printer driver",
              [](MadeMachine& made) {
                  made.root.write("proc/sys/dev/parport/parport0/devices/lp/timeslice", "");
              },
              "wrong: LPT1 at 0x378, but the system's driver lp has it. To do: sudo rmmod lp"},
             {"another program",
              [](MadeMachine& made) {
                  made.root.write("proc/sys/dev/parport/parport0/devices/ppdev0/timeslice", "");
                  made.runProgram(12, "prober", "/dev/parport0");
              },
              "wrong: LPT1 at 0x378, but it is held by prober (process 12). To do: close that "
              "program"},
             {"a hidden program",
              [](MadeMachine& made) {
                  made.root.write("proc/sys/dev/parport/parport0/devices/ppdev0/timeslice", "");
              },
              "wrong: LPT1 at 0x378, but a program that you may not see holds it. To do: sudo "
              "bitlux doctor, which names the program; then close it"},
             {"no registers", [](MadeMachine& made) { made.addPort(0, "0\t0\n"); },
              "note: has no registers of its own, so its pins cannot be driven"},
         }) {
        MadeMachine made;
        made.addPort(0, "888\t1912\n");
        made.openable.insert("/dev/parport0");
        made.memberships["lp"] = Membership::InEffect;
        change(made);
        const bool isUsable = std::string_view(line).starts_with("ok");
        EXPECT_EQ(made.run(), isUsable ? 0 : 1) << what;
        EXPECT_EQ(made.line("/dev/parport0"), line) << what;
        EXPECT_EQ(made.verdict(),
                  isUsable ? "Usable: the parallel port. No USB dongle is.\n" : unusable)
            << what;
    }
}

TEST(Doctor, TellsOfThePortsDrivers) {
    MadeMachine made;
    made.root.write("sys/module/parport_pc/refcnt", "");
    made.run();
    EXPECT_EQ(made.line("parport_pc"),
              "wrong: the driver of the ports is loaded, but has found no port. To do: switch the "
              "port on in the BIOS set-up, or plug in a card");
    made.addPort(3, "632\t0\n");
    made.addPort(1, "888\t0\n");
    made.openable = {"/dev/parport1", "/dev/parport3"};
    made.plugDongleIn();
    made.list("1234:abcd");
    made.openable.insert(usbNodeName);
    EXPECT_EQ(made.run(), 0);
    EXPECT_EQ(made.line("/dev/parport1"), "ok: LPT2 at 0x378, can be opened");
    EXPECT_EQ(made.line("/dev/parport3"),
              "note: at 0x278, not used: only parport0 to parport2 are, as LPT1 to LPT3");
    EXPECT_EQ(made.line("group lp"), "note: ann is no member, and needs not be");
    EXPECT_EQ(made.verdict(), "Usable: the USB dongle and the parallel port.\n");
}

TEST(Doctor, PrintsUdevRules) {
    MadeMachine made;
    made.list("1234:ABCD\nbad\n0403:6014\n");
    EXPECT_EQ(made.run(true), 0);
    std::istringstream lines(made.output.str());
    std::string rules;
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with('#'))
            rules += line + "\n";
    std::string expected;
    for (const char* numbers :
         {R"("1234", ATTR{idProduct}=="abcd")", R"("0403", ATTR{idProduct}=="6001")",
          R"("0403", ATTR{idProduct}=="6010")", R"("0403", ATTR{idProduct}=="6011")",
          R"("0403", ATTR{idProduct}=="6014")", R"("0403", ATTR{idProduct}=="6015")"})
        expected += fmt::format("SUBSYSTEM==\"usb\", ATTR{{idVendor}}=={}, MODE=\"0660\", "
                                "GROUP=\"plugdev\", TAG+=\"uaccess\"\n",
                                numbers);
    EXPECT_EQ(rules, expected);
    EXPECT_NE(made.output.str().find("#   " + install), std::string::npos);
    EXPECT_NE(made.errors.str().find("line 2: \"bad\""), std::string::npos);
}

TEST(Doctor, SaysWhatAnAdapterLacks) {
    const std::string devices = "sys/bus/usb/devices/";
    const std::string tty = devices + "1-2/1-2:1.0/ttyUSB0/dev";
    for (const auto& [what, change, line] :
         Rows<const char*, std::function<void(MadeMachine&)>, std::string>{
             {"all well", [](MadeMachine&) {}, "ok: FT232R A50285BI at 1-2, can be opened"},
             {"serial driver",
              [](MadeMachine& made) { made.runProgram(97, "minicom", "/dev/ttyUSB1"); },
              "ok: FT232R A50285BI at 1-2, can be opened"},
             {"talking program",
              [](MadeMachine& made) { made.runProgram(97, "minicom", "/dev/ttyUSB0"); },
              "wrong: FT232R A50285BI at 1-2, but it is in use as /dev/ttyUSB0 by minicom "
              "(process 97). To do: close that program"},
             {"other program",
              [](MadeMachine& made) {
                  made.bindDongle("usbfs");
                  made.runProgram(812, "bitlux-forge", usbNodeName);
              },
              "wrong: FT232R A50285BI at 1-2, but it is held by bitlux-forge (process 812). To "
              "do: close that program"},
             {"no rights", [](MadeMachine& made) { made.openable.clear(); },
              "wrong: FT232R A50285BI at 1-2, but you may not open it. To do: " + reload},
             {"no rule",
              [](MadeMachine& made) {
                  made.openable.clear();
                  made.root.write(rulesName, "# old");
              },
              "wrong: FT232R A50285BI at 1-2, but you may not open it. To do: " + install},
             {"wrong settings",
              [](MadeMachine& made) {
                  made.root.write("etc/adapters.conf", "[A50285BI]\nx = 1\n");
              },
              "wrong: FT232R A50285BI at 1-2, but adapters.conf is wrong about it. To do: "
              "correct adapters.conf"}}) {
        SCOPED_TRACE(what);
        MadeMachine made;
        made.plugDongleIn();
        made.memberships["plugdev"] = Membership::InEffect;
        for (const auto& [file, text] : {std::pair{"idVendor", "0403\n"},
                                         {"idProduct", "6001\n"},
                                         {"bcdDevice", "0600\n"},
                                         {"serial", "A50285BI\n"}})
            made.root.write(devices + "1-2/" + file, text);
        made.root.write(tty, "");
        made.openable.insert(usbNodeName);
        made.run(true);
        made.root.write(rulesName, made.output.str());
        change(made);
        const bool isUsable = line.starts_with("ok");
        EXPECT_EQ(made.run(), isUsable ? 0 : 1);
        EXPECT_EQ(made.line(usbNodeName), line) << "as an adapter, and not as a strange dongle";
        EXPECT_EQ(made.verdict(), isUsable ? "Usable: the adapter.\n" : unusable);
        std::ostringstream list;
        runListCommand({}, made.machine, list);
        EXPECT_TRUE(list.str().ends_with("\nPlugged in:\n--bus ftdi:A50285BI  FT232R at 1-2 with "
                                         "the pins 2 to 8 and 12\n"))
            << list.str();
    }
}

} // namespace
} // namespace bitlux::test
