#pragma once

/// Sets a flag for as long as it lives.
class FlagGuard {
 public:
  explicit FlagGuard(bool& flag) : flag_(flag) { flag_ = true; }
  ~FlagGuard() { flag_ = false; }
  FlagGuard(const FlagGuard&) = delete;
  FlagGuard& operator=(const FlagGuard&) = delete;

 private:
  bool& flag_;
};
