#include "panels/zt72518/panel_variables.h"

namespace bitlux::zt72518 {

void registerVariables(forms::Form& form, PanelVariables& v, Session& session) {
    form.variable("BitIndex", v.BitIndex);
    form.variable("WordLowByte", v.WordLowByte);
    form.variable("SPIParityEnabled", v.SPIParityEnabled);
    form.variable("ParityBit", v.ParityBit);
    form.variable("ReadBit", v.ReadBit);
    form.variable("ZT72518WordHigh", session.ZT72518WordHigh);
    form.variable("ZT72518WordLow", session.ZT72518WordLow);
    form.variable("ZT72518ReplyLow", session.ZT72518ReplyLow);
    form.variable("ZT72518ReplyHigh", session.ZT72518ReplyHigh);
    form.variable("ModeCode", v.ModeCode);
    form.variable("StoreCommands", v.StoreCommands);
    form.variable("StoreFileName", v.StoreFileName);
    form.variable("StoreFileNumber", v.StoreFileNumber);
    form.variable("LoopStopRequest", v.LoopStopRequest);
    form.variable("Pass1", v.Pass1);
    form.variable("Pass2", v.Pass2);
    form.variable("Condition1Seen", v.Condition1Seen);
    form.variable("Condition2Seen", v.Condition2Seen);
    form.variable("RunEnabled", v.RunEnabled);
    form.variable("NextLoopPick", v.NextLoopPick);
    form.variable("SequenceHighByte", v.SequenceHighByte);
    form.variable("SequenceIsWrite", v.SequenceIsWrite);
    form.variable("SequenceIsWatchdog", v.SequenceIsWatchdog);
    form.variable("WdConfigRequest", session.WdConfigRequest);
    form.variable("WdSequenceRequest", session.WdSequenceRequest);
    form.variable("WdSequenceMode", session.WdSequenceMode);
    form.variable("WdSequenceTime", session.WdSequenceTime);
    form.variable("WdCurrentOn", session.WdCurrentOn);
    form.variable("WdStopRequest", session.WdStopRequest);
}

} // namespace bitlux::zt72518
