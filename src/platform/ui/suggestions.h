#pragma once
#include "platform/ui/event.h"
#include "platform/ui/keys.h"

#include <functional>
#include <string>
#include <vector>

namespace quorvel::ui {

/// One code that a cell may take, and what it is called.
struct Suggestion {
    std::string code, text;
};

/// The list under an open cell: codes whose names have what is being typed. Nothing without a source.
class Suggestions {
public:
    using Source = std::function<std::vector<Suggestion>(int column, const std::string& typed)>;
    void SetSource(Source source) { source_ = std::move(source); }
    /// The open cell's text has become this.
    void follow(int column, const std::string& typed);
    void close();
    [[nodiscard]] const std::vector<Suggestion>& rows() const { return rows_; }
    /// -1: none is chosen, and the text is taken as it was typed. Letters choose the first row, digits none.
    [[nodiscard]] int current() const { return current_; }
    void choose(int row);
    [[nodiscard]] const Suggestion* chosen() const;
    /// Letters were typed that no name has.
    [[nodiscard]] bool missed() const { return missed_; }
    /// Arrows choose, Escape closes the list and keeps the text. @return whether the key was one of these
    bool key(const KeyEvent& e);

    Event<> Changed;

private:
    Source source_;
    std::vector<Suggestion> rows_;
    int current_ = -1;
    bool missed_ = false;
};

/// Whether a text is being looked for by its name: it has a letter.
[[nodiscard]] bool has_letter(const std::string& text);

} // namespace quorvel::ui
