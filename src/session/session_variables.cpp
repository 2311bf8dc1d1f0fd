#include "session/session_variables.h"

#include <array>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace bitlux {

namespace {

template <typename T>
VariablePlace placeOf(T& variable) {
    return &variable;
}
template <typename T, std::size_t N>
VariablePlace placeOf(std::array<T, N>& variable) {
    return std::span<T>(variable);
}
template <std::size_t N>
VariablePlace placeOf(std::array<PartTab, N>& variable) {
    return std::span<const PartTab>(variable);
}
template <int Bits>
VariablePlace placeOf(PortPins<Bits>& variable) {
    return &std::as_const(variable);
}
VariablePlace placeOf(QuickCommandTable& variable) {
    return &std::as_const(variable);
}
VariablePlace placeOf(std::vector<std::string>& variable) {
    return &std::as_const(variable);
}
VariablePlace placeOf(BatchLists& variable) {
    return &std::as_const(variable);
}

template <auto Member>
VariablePlace at(Session& session) {
    return placeOf(session.*Member);
}
template <auto Member>
VariablePlace atSaved(Session& session) {
    return placeOf(session.Saved.*Member);
}

constexpr std::array variables = std::to_array<SessionVariable>({
    {"BuildNumber", at<&Session::BuildNumber>},
    {"SPIWordLength", at<&Session::SPIWordLength>},
    {"SavedSPIWordLength", at<&Session::SavedSPIWordLength>},
    {"MaxSPIBits", at<&Session::MaxSPIBits>},
    {"SPIType", at<&Session::SPIType>},
    {"SavedSPIType", at<&Session::SavedSPIType>},
    {"SPITypeTab", at<&Session::SPITypeTab>},
    {"MSBFirst", at<&Session::MSBFirst>},
    {"DisplayHex", at<&Session::DisplayHex>},
    {"CSAssertLevel", at<&Session::CSAssertLevel>},
    {"CSIdleLevel", at<&Session::CSIdleLevel>},
    {"DIOneLevel", at<&Session::DIOneLevel>},
    {"DIZeroLevel", at<&Session::DIZeroLevel>},
    {"ClockHighLevel", at<&Session::ClockHighLevel>},
    {"ClockLowLevel", at<&Session::ClockLowLevel>},
    {"DOHighValue", at<&Session::DOHighValue>},
    {"DOLowValue", at<&Session::DOLowValue>},
    {"ParallelPortReady", at<&Session::ParallelPortReady>},
    {"LPTPortAddress", at<&Session::LPTPortAddress>},
    {"LPTPortAddresses", at<&Session::LPTPortAddresses>},
    {"AdapterInUse", at<&Session::AdapterInUse>},
    {"AdapterClock", at<&Session::AdapterClock>},
    {"DIPin", at<&Session::DIPin>},
    {"CSPin", at<&Session::CSPin>},
    {"ClockPin", at<&Session::ClockPin>},
    {"DOPin", at<&Session::DOPin>},
    {"DataPortPins", at<&Session::DataPortPins>},
    {"ControlPortPins", at<&Session::ControlPortPins>},
    {"USBReady", at<&Session::USBReady>},
    {"USBReadDone", at<&Session::USBReadDone>},
    {"SPIBaudRate", at<&Session::SPIBaudRate>},
    {"USBPinUpdate", at<&Session::USBPinUpdate>},
    {"USBExtraPins0", at<&Session::USBExtraPins0>},
    {"USBExtraPins1", at<&Session::USBExtraPins1>},
    {"USBFrameTopBit", at<&Session::USBFrameTopBit>},
    {"FirmwareUpdateRequest", at<&Session::FirmwareUpdateRequest>},
    {"InterruptSeen", at<&Session::InterruptSeen>},
    {"ResetSeen", at<&Session::ResetSeen>},
    {"ZT72518PanelActive", at<&Session::ZT72518PanelActive>},
    {"ZT72516PanelActive", at<&Session::ZT72516PanelActive>},
    {"ZT72361PanelActive", at<&Session::ZT72361PanelActive>},
    {"ZT72537PanelActive", at<&Session::ZT72537PanelActive>},
    {"ZT72361Data", at<&Session::ZT72361Data>},
    {"ZT72537FrameByte7", at<&Session::ZT72537FrameByte7>},
    {"ZT72518WordHigh", at<&Session::ZT72518WordHigh>},
    {"ZT72518WordLow", at<&Session::ZT72518WordLow>},
    {"ZT72518ReplyHigh", at<&Session::ZT72518ReplyHigh>},
    {"ZT72518ReplyLow", at<&Session::ZT72518ReplyLow>},
    {"WdConfigRequest", at<&Session::WdConfigRequest>},
    {"WdSequenceRequest", at<&Session::WdSequenceRequest>},
    {"WdSequenceMode", at<&Session::WdSequenceMode>},
    {"WdSequenceTime", at<&Session::WdSequenceTime>},
    {"WdCurrentOn", at<&Session::WdCurrentOn>},
    {"WdStopRequest", at<&Session::WdStopRequest>},
    {"ZT72516WatchdogStart", at<&Session::ZT72516WatchdogStart>},
    {"PSPIMode", at<&Session::PSPIMode>},
    {"PSPIModeChange", at<&Session::PSPIModeChange>},
    {"PSPIReply", at<&Session::PSPIReply>},
    {"LinkFailed", at<&Session::LinkFailed>},
    {"WordToSend", at<&Session::WordToSend>},
    {"WordReceived", at<&Session::WordReceived>},
    {"WordAnswered", at<&Session::WordAnswered>},
    {"PortStatusSamples", at<&Session::PortStatusSamples>},
    {"SingleWordBits", at<&Session::SingleWordBits>},
    {"QuickCommandTable", at<&Session::QuickCommandTable>},
    {"QuickCommandTableEmpty", at<&Session::QuickCommandTableEmpty>},
    {"StopSending", at<&Session::StopSending>},
    {"lstBatchList", at<&Session::lstBatchList>},
    {"SessionLogEnabled", at<&Session::SessionLogEnabled>},
    {"SessionLogCapacity", at<&Session::SessionLogCapacity>},
    {"ContinuousLogEnabled", at<&Session::ContinuousLogEnabled>},
    {"ContinuousLogLimit", at<&Session::ContinuousLogLimit>},
    {"ContinuousLogCount", at<&Session::ContinuousLogCount>},
    {"SessionLogCount", at<&Session::SessionLogCount>},
    {"LogFileName", at<&Session::LogFileName>},
    {"ActiveMainTab", at<&Session::ActiveMainTab>},
    {"ConfigTab", at<&Session::ConfigTab>},
    {"LogPinsTab", at<&Session::LogPinsTab>},
    {"LogPinsNowTab", at<&Session::LogPinsNowTab>},
    {"PartTabs", at<&Session::PartTabs>},
    {"UserChips", at<&Session::UserChips>},
    {"PartName", at<&Session::PartName>},
    {"ConfigFileName", at<&Session::ConfigFileName>},
    {"CommandLine", at<&Session::CommandLine>},
    {"OpenFromCommandLine", at<&Session::OpenFromCommandLine>},
    {"ConfigDirty", at<&Session::ConfigDirty>},
    {"StartingUp", at<&Session::StartingUp>},
});

constexpr std::array others = std::to_array<SessionVariable>({
    {"MainTab", at<&Session::ActiveMainTab>},
    {"BatchCount", [](Session& session) -> VariablePlace { return session.BatchCount(); }},
});

constexpr std::array savedVariables = std::to_array<SessionVariable>({
    {"SavedPartName", atSaved<&SavedDialog::SavedPartName>},
    {"SavedWordLengthText", atSaved<&SavedDialog::SavedWordLengthText>},
    {"SavedCSText", atSaved<&SavedDialog::SavedCSText>},
    {"SavedDIText", atSaved<&SavedDialog::SavedDIText>},
    {"SavedDOText", atSaved<&SavedDialog::SavedDOText>},
    {"SavedCLKText", atSaved<&SavedDialog::SavedCLKText>},
    {"SavedCSnegative", atSaved<&SavedDialog::SavedCSnegative>},
    {"SavedDIpolarity_pos", atSaved<&SavedDialog::SavedDIpolarity_pos>},
    {"SavedDOpolarity_pos", atSaved<&SavedDialog::SavedDOpolarity_pos>},
    {"SavedSPITypeCaption", atSaved<&SavedDialog::SavedSPITypeCaption>},
    {"SavedBinary", atSaved<&SavedDialog::SavedBinary>},
    {"SavedMSBfirst", atSaved<&SavedDialog::SavedMSBfirst>},
    {"SavedLogOff", atSaved<&SavedDialog::SavedLogOff>},
    {"SavedLogForever", atSaved<&SavedDialog::SavedLogForever>},
    {"SavedLogFixed", atSaved<&SavedDialog::SavedLogFixed>},
    {"SavedDataPinEnable", atSaved<&SavedDialog::SavedDataPinEnable>},
    {"SavedDataPinName", atSaved<&SavedDialog::SavedDataPinName>},
    {"SavedDataPinIndex", atSaved<&SavedDialog::SavedDataPinIndex>},
    {"SavedControlPinEnable", atSaved<&SavedDialog::SavedControlPinEnable>},
    {"SavedControlPinName", atSaved<&SavedDialog::SavedControlPinName>},
    {"SavedControlPinIndex", atSaved<&SavedDialog::SavedControlPinIndex>},
    {"SavedHardCode3BC", atSaved<&SavedDialog::SavedHardCode3BC>},
    {"SavedHardCode378", atSaved<&SavedDialog::SavedHardCode378>},
    {"SavedHardCode278", atSaved<&SavedDialog::SavedHardCode278>},
    {"SavedPortListIndex", atSaved<&SavedDialog::SavedPortListIndex>},
    {"SavedPortIndex", atSaved<&SavedDialog::SavedPortIndex>},
});

/// Stands for a value of any type.
struct Anything {
    template <typename T>
    operator T() const; // NOLINT(google-explicit-constructor)
};

/// How many members an aggregate has.
template <typename T, typename... Values>
constexpr std::size_t memberCount() {
    if constexpr (requires { T{Values{}..., Anything{}}; })
        return memberCount<T, Values..., Anything>();
    else
        return sizeof...(Values);
}

static_assert(variables.size() + 1 == memberCount<Session>(), "a variable has no name yet");
static_assert(savedVariables.size() == memberCount<SavedDialog>(), "a variable has no name yet");

constexpr auto all = [] {
    std::array<SessionVariable, variables.size() + others.size() + savedVariables.size()> result{};
    std::size_t next = 0;
    for (const SessionVariable& variable : variables)
        result[next++] = variable;
    for (const SessionVariable& variable : others)
        result[next++] = variable;
    for (const SessionVariable& variable : savedVariables)
        result[next++] = variable;
    return result;
}();

} // namespace

std::span<const SessionVariable> sessionVariables() {
    return all;
}

} // namespace bitlux
