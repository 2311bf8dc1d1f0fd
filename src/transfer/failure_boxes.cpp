#include "transfer/failure_boxes.h"

namespace bitlux {

MessageBox::Answer FailureBoxes::show(const MessageBox& box) {
    const bool isNew = run_ == nullptr || run_->told_.insert(box.text).second;
    return isNew ? boxes_.show(box) : MessageBox::Answer::Ok;
}

} // namespace bitlux
