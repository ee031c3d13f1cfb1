#pragma once
#include <string>
#include <vector>

namespace quorvel::ui {

/// What a person did to the rows of a grid, step by step, so that it can be taken back and done again. What
/// code does between the steps is no part of it.
class History {
public:
    struct Change {
        enum Kind { cell, inserted, removed } kind;
        int row, col;                   ///< col of a cell
        std::vector<std::string> texts; ///< the cell's text before, or the removed row
    };
    using Step = std::vector<Change>;

    /// Everything that is noted while one lives is one step; steps within steps belong to the outer one.
    class Recording {
    public:
        explicit Recording(History& h) : h_(h) { ++h_.depth_; }
        ~Recording() {
            if (--h_.depth_ == 0) h_.finish();
        }
        Recording(const Recording&) = delete;
        Recording& operator=(const Recording&) = delete;

    private:
        History& h_;
    };

    [[nodiscard]] bool recording() const { return depth_ > 0; }
    void note(Change change);
    void clear();
    std::vector<Step> done, undone; ///< the last one is taken back, or done again, first

private:
    void finish();
    Step open_;
    int depth_ = 0;
};

} // namespace quorvel::ui
