#include "link/deadline.h"

Deadline::Deadline(EventPump& pump, std::chrono::milliseconds time_out)
    : pump_(pump), time_out_(time_out), end_(pump.now() + time_out), entry_(pump.deadlines_.insert(end_)) {}

Deadline::~Deadline() {
  pump_.deadlines_.erase(entry_);
}

void Deadline::restart() {
  pump_.deadlines_.erase(entry_);
  end_ = pump_.now() + time_out_;
  entry_ = pump_.deadlines_.insert(end_);
}
