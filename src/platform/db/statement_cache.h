#pragma once
#include "platform/db/tokenizer.h"

#include <algorithm>
#include <memory>

namespace quorvel {

/// Where a literal stands in a statement's text.
struct LiteralSpan {
    Tok kind;
    std::uint32_t offset, length;
};

/// A statement seen as a fixed text with literals in it; scanning it allocates nothing once warm.
class Skeleton {
public:
    /// @return false when the text is no statement of the dialect; tokenize() then tells why
    bool scan(std::string_view sql) {
        sql_ = sql;
        literals_.clear();
        std::uint64_t hash = 0x9E3779B97F4A7C15U;
        const char* p = sql.data();
        const char* const begin = p;
        const char* const end = p + sql.size();
        const char* from = p;
        const char* start = p;
        while (true) {
            const Tok kind = lexer::next(start, p, end);
            if (kind == Tok::end) break;
            if (kind == Tok::bad) return false;
            if (!is_literal(kind)) continue;
            hash = mix(hash, from, start);
            hash = (hash ^ static_cast<std::uint64_t>(kind)) * 0xD6E8FEB86659FD93U;
            literals_.push_back(
                {kind, static_cast<std::uint32_t>(start - begin), static_cast<std::uint32_t>(p - start)});
            from = p;
        }
        hash_ = mix(hash, from, end);
        return true;
    }
    [[nodiscard]] std::uint64_t hash() const { return hash_; }
    [[nodiscard]] std::string_view sql() const { return sql_; }
    [[nodiscard]] const std::vector<LiteralSpan>& literals() const { return literals_; }
    [[nodiscard]] std::string_view literal(std::size_t i) const {
        return sql_.substr(literals_[i].offset, literals_[i].length);
    }

private:
    static std::uint64_t mix(std::uint64_t h, const char* p, const char* end) {
        while (end - p >= 8) {
            std::uint64_t w;
            std::memcpy(&w, p, 8);
            h = (h ^ w) * 0x9FB21C651E98DF25U;
            h ^= h >> 32U;
            p += 8;
        }
        std::uint64_t w = 0;
        std::memcpy(&w, p, static_cast<std::size_t>(end - p));
        h = (h ^ w ^ static_cast<std::uint64_t>(end - p)) * 0x9FB21C651E98DF25U;
        return h ^ (h >> 29U);
    }
    std::string_view sql_;
    std::vector<LiteralSpan> literals_;
    std::uint64_t hash_ = 0;
};

/// Statements found again by their text without the lifted literals; the least recently used one goes first.
template <class Payload> class StatementCache {
public:
    struct Entry {
        std::uint64_t hash = 0, used = 0;
        std::string sql;
        std::vector<LiteralSpan> literals;
        std::vector<bool> lifted; ///< the others must be the same text
        Payload payload;
    };

    [[nodiscard]] Entry* find(const Skeleton& s) {
        for (auto& e : buckets_[s.hash() % buckets_.size()])
            if (e->hash == s.hash() && same(*e, s)) {
                e->used = ++clock_;
                return e.get();
            }
        return nullptr;
    }
    /// @param evict called with the payload that has to make room
    template <class F> Entry& add(const Skeleton& s, std::vector<bool> lifted, Payload payload, F&& evict) {
        if (size_ >= CAPACITY) drop_oldest(evict);
        auto e = std::make_unique<Entry>();
        e->hash = s.hash();
        e->used = ++clock_;
        e->sql = std::string(s.sql());
        e->literals = s.literals();
        e->lifted = std::move(lifted);
        e->payload = std::move(payload);
        auto& bucket = buckets_[s.hash() % buckets_.size()];
        bucket.push_back(std::move(e));
        ++size_;
        return *bucket.back();
    }
    template <class F> void clear(F&& evict) {
        for (auto& bucket : buckets_) {
            for (auto& e : bucket) evict(e->payload);
            bucket.clear();
        }
        size_ = 0;
    }
    [[nodiscard]] std::size_t size() const { return size_; }

private:
    static constexpr std::size_t CAPACITY = 200;

    static bool same(const Entry& e, const Skeleton& s) {
        const auto& mine = e.literals;
        const auto& other = s.literals();
        if (mine.size() != other.size()) return false;
        std::size_t a = 0, b = 0;
        for (std::size_t i = 0; i < mine.size(); ++i) {
            const std::size_t length = mine[i].offset - a;
            if (mine[i].kind != other[i].kind || other[i].offset - b != length ||
                std::memcmp(e.sql.data() + a, s.sql().data() + b, length) != 0)
                return false;
            a = mine[i].offset + mine[i].length;
            b = other[i].offset + other[i].length;
            if (!e.lifted[i] &&
                std::string_view(e.sql).substr(mine[i].offset, mine[i].length) != s.literal(i))
                return false;
        }
        return std::string_view(e.sql).substr(a) == s.sql().substr(b);
    }
    template <class F> void drop_oldest(F&& evict) {
        std::vector<std::unique_ptr<Entry>>* where = nullptr;
        std::size_t which = 0;
        std::uint64_t oldest = ~std::uint64_t{0};
        for (auto& bucket : buckets_)
            for (std::size_t i = 0; i < bucket.size(); ++i)
                if (bucket[i]->used < oldest) {
                    oldest = bucket[i]->used;
                    where = &bucket;
                    which = i;
                }
        if (where == nullptr) return;
        evict((*where)[which]->payload);
        where->erase(where->begin() + static_cast<std::ptrdiff_t>(which));
        --size_;
    }
    std::array<std::vector<std::unique_ptr<Entry>>, 256> buckets_;
    std::size_t size_ = 0;
    std::uint64_t clock_ = 0;
};

} // namespace quorvel
