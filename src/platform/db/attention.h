#pragma once
#include <chrono>
#include <functional>
#include <utility>

namespace quorvel {

/// Whom a session asks, about twenty times a second, whether a long statement may go on.
class Attention {
public:
    void set(std::function<bool()> go_on) {
        go_on_ = std::move(go_on);
        next_ = {};
    }
    [[nodiscard]] bool wanted() const { return go_on_ != nullptr; }
    /// The one who is asked has no use of the session: its statement is not finished.
    [[nodiscard]] bool asking() const { return asking_; }
    /// Called by the engine's code, which no exception may cross. @return true to interrupt the statement
    [[nodiscard]] bool stops() noexcept {
        using namespace std::chrono;
        if (!wanted() || steady_clock::now() < next_) return false;
        asking_ = true;
        const bool goes_on = go_on_();
        asking_ = false;
        next_ = steady_clock::now() + PAUSE;
        return !goes_on;
    }
    static constexpr std::chrono::milliseconds PAUSE{50};

private:
    std::function<bool()> go_on_;
    std::chrono::steady_clock::time_point next_;
    bool asking_ = false;
};

} // namespace quorvel
