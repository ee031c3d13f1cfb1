#pragma once

namespace quorvel::ui {

/// Sets a flag for the time of a call, also when that ends by an exception.
class Flag {
public:
    explicit Flag(bool& flag) : flag_(flag) { flag_ = true; }
    ~Flag() { flag_ = false; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

private:
    bool& flag_;
};

} // namespace quorvel::ui
