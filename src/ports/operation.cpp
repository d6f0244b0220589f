#include "ports/operation.h"

#include <exception>

namespace nrv {

void Operation::Begin(const Subject& subject) {
    subject_ = subject;
    busy_ = true;
    reason_.clear();
    title_.clear();
    leaves_ = Leaves::Edits;
    Call({});
    Run(Watch.Began);
}

void Operation::End() {
    Run(Watch.Ending);
    subject_.reset();
    busy_ = false;
    reported_ = false;
    Run(Watch.Over);
}

void Operation::BeginPart() {
    busy_ = true;
    Run(Watch.Began);
}

void Operation::EndPart() {
    Run(Watch.Ending);
    busy_ = false;
}

void Operation::BelongTo(const Subject& subject) {
    if (Running()) {
        subject_ = subject;
    }
}

void Operation::Call(std::string name, int frames) {
    name_ = std::move(name);
    progress_.clear();
    frames_ = frames;
    answered_ = 0;
    unsent_ = 0;
}

Operation::Standing::Standing(Operation& operation, Loop loop)
    : operation_(operation), loop_(loop), was_busy_(operation.busy_) {
    Run(operation_.Watch.LoopBegins);
    operation_.busy_ = false;
    ++(loop_ == Loop::Box ? operation_.boxes_ : operation_.dialogs_);
}

Operation::Standing::~Standing() {
    --(loop_ == Loop::Box ? operation_.boxes_ : operation_.dialogs_);
    operation_.busy_ = was_busy_;
    if (operation_.Watch.LoopEnds && std::uncaught_exceptions() == 0) {
        operation_.Watch.LoopEnds();
    }
}

} // namespace nrv
