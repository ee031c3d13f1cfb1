#pragma once
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace quorvel::ui {

/// Takes a handler away again when it dies; views hold one for each event they follow.
class Connection {
public:
    Connection() = default;
    explicit Connection(std::weak_ptr<bool> alive) : alive_(std::move(alive)) {}
    Connection(Connection&& o) noexcept : alive_(std::exchange(o.alive_, {})) {}
    Connection& operator=(Connection&& o) noexcept {
        disconnect();
        alive_ = std::exchange(o.alive_, {});
        return *this;
    }
    ~Connection() { disconnect(); }
    void disconnect() {
        if (const auto a = alive_.lock()) *a = false;
        alive_.reset();
    }

private:
    std::weak_ptr<bool> alive_;
};

/// A list of handlers. Handlers may be added and removed while the event is raised.
template <class... A> class Event {
public:
    /// A handler that lives as long as the event.
    template <class F> void operator+=(F f) { add(std::move(f)); }
    /// A handler that lives as long as the connection.
    template <class F> [[nodiscard]] Connection connect(F f) { return Connection(add(std::move(f))); }
    void operator()(A... a) const {
        const auto slots = slots_; // a handler may destroy the event's owner
        for (std::size_t i = 0; i < slots->size(); ++i) {
            const auto slot = (*slots)[i];
            if (*slot->alive) slot->call(a...);
        }
    }

private:
    struct Slot {
        std::function<void(A...)> call;
        std::shared_ptr<bool> alive = std::make_shared<bool>(true);
    };
    template <class F> std::weak_ptr<bool> add(F f) {
        std::erase_if(*slots_, [](const auto& s) { return !*s->alive; });
        slots_->push_back(std::make_shared<Slot>(Slot{std::move(f)}));
        return slots_->back()->alive;
    }
    std::shared_ptr<std::vector<std::shared_ptr<Slot>>> slots_ =
        std::make_shared<std::vector<std::shared_ptr<Slot>>>();
};

} // namespace quorvel::ui
