#include "panels/zt72518/panel_variables.h"

namespace bitlux::zt72518 {

void registerVariables(forms::Form& form, PanelVariables& v) {
    form.variable("BitIndex", v.BitIndex);
    form.variable("WordLowByte", v.WordLowByte);
    form.variable("SPIParityEnabled", v.SPIParityEnabled);
    form.variable("ParityBit", v.ParityBit);
    form.variable("ReadBit", v.ReadBit);
    form.variable("ZT72518WordHigh", v.ZT72518WordHigh);
    form.variable("ZT72518WordLow", v.ZT72518WordLow);
    form.variable("ZT72518ReplyLow", v.ZT72518ReplyLow);
    form.variable("ZT72518ReplyHigh", v.ZT72518ReplyHigh);
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
    form.variable("WdConfigRequest", v.WdConfigRequest);
    form.variable("WdSequenceRequest", v.WdSequenceRequest);
    form.variable("WdSequenceMode", v.WdSequenceMode);
    form.variable("WdSequenceTime", v.WdSequenceTime);
    form.variable("WdCurrentOn", v.WdCurrentOn);
    form.variable("WdStopRequest", v.WdStopRequest);
}

} // namespace bitlux::zt72518
