#pragma once
#include "platform/db/clsConexion.h"
#include "platform/db/tokenizer.h"
#include "platform/db/vocabulary.h"

#include <optional>
#include <utility>

namespace quorvel {

/// Questions about a statement's tokens by their position.
class TokenView {
protected:
    explicit TokenView(std::vector<Token> tokens) : tokens_(std::move(tokens)) {}

    [[nodiscard]] bool is(std::size_t i, std::string_view text) const {
        return i < tokens_.size() && (tokens_[i].kind == Tok::name || tokens_[i].kind == Tok::op) &&
               tokens_[i].text == text;
    }
    [[nodiscard]] bool column_name(std::size_t i) const {
        return i < tokens_.size() &&
               (tokens_[i].kind == Tok::quoted_name ||
                (tokens_[i].kind == Tok::name && !vocabulary::keyword(tokens_[i].text)));
    }
    [[nodiscard]] bool comparison(std::size_t i) const {
        return i < tokens_.size() && tokens_[i].kind == Tok::op && vocabulary::comparison(tokens_[i].text);
    }
    /// "in", "not in", or a comparison stands at i.
    [[nodiscard]] bool compares(std::size_t i) const {
        return comparison(i) || is(i, "in") || (is(i, "not") && is(i + 1, "in"));
    }
    /// First token of the column (qualified or not) that ends at i; nothing when it is part of an expression.
    [[nodiscard]] std::optional<std::size_t> bare_column(std::size_t i) const {
        if (!column_name(i)) return std::nullopt;
        const std::size_t first = i >= 2 && is(i - 1, ".") && column_name(i - 2) ? i - 2 : i;
        if (first == 0) return first;
        const Token& before = tokens_[first - 1];
        const bool opens = before.kind == Tok::name ? vocabulary::opens_condition(before.text)
                                                    : before.text == "(" || before.text == ",";
        return opens ? std::optional(first) : std::nullopt;
    }
    /// The expression of a comparison ends before i.
    [[nodiscard]] bool ends_here(std::size_t i, std::size_t end) const {
        if (i >= end) return true;
        return tokens_[i].kind == Tok::name ? vocabulary::ends_condition(tokens_[i].text)
                                            : tokens_[i].text == "," || tokens_[i].text == ")";
    }

    /// Finds each parenthesis' other one. @throws ErrorSesion when there is none
    void close_parentheses(std::string_view sql) {
        constexpr std::size_t DEEPEST = 200; // each level is a call; no statement of ours has ten
        partner_.assign(tokens_.size(), 0);
        std::vector<std::size_t> open;
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (is(i, "(")) open.push_back(i);
            if (open.size() > DEEPEST) throw ErrorSesion("Demasiados paréntesis", std::string(sql));
            if (!is(i, ")")) continue;
            if (open.empty()) throw ErrorSesion("Paréntesis sin abrir", std::string(sql));
            partner_[open.back()] = i;
            partner_[i] = open.back();
            open.pop_back();
        }
        if (!open.empty()) throw ErrorSesion("Paréntesis sin cerrar", std::string(sql));
    }

    std::vector<Token> tokens_;
    std::vector<std::size_t> partner_; ///< position of the matching parenthesis
};

} // namespace quorvel
