#include "platform/files/codepage.h"

#include <iconv.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace quorvel {

namespace {
class Handle {
public:
    Handle(const char* to, const char* from) : cd_(iconv_open(to, from)) {
        if (cd_ == reinterpret_cast<iconv_t>(-1))
            throw std::system_error(errno, std::generic_category(), "Windows-1252");
    }
    ~Handle() { iconv_close(cd_); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    Converted run(std::string_view in) {
        Converted r;
        r.text.reserve(in.size() + in.size() / 8);
        iconv(cd_, nullptr, nullptr, nullptr, nullptr);
        char* from = const_cast<char*>(in.data()); // NOLINT: the interface is older than const
        std::size_t left = in.size();
        while (left > 0) {
            std::array<char, 4096> buffer{};
            char* to = buffer.data();
            std::size_t room = buffer.size();
            const std::size_t n = iconv(cd_, &from, &left, &to, &room);
            r.text.append(buffer.data(), buffer.size() - room);
            if (n == static_cast<std::size_t>(-1) && errno != E2BIG) {
                r.bad = in.size() - left;
                break;
            }
        }
        return r;
    }

private:
    iconv_t cd_;
};
} // namespace

struct Codepage::Handles {
    Handle to{"WINDOWS-1252", "UTF-8"}, from{"UTF-8", "WINDOWS-1252"};
};

Codepage::Codepage() : handles_(std::make_unique<Handles>()) {}
Codepage::~Codepage() = default;
Converted Codepage::to_windows1252(std::string_view utf8) { return handles_->to.run(utf8); }
Converted Codepage::from_windows1252(std::string_view bytes) { return handles_->from.run(bytes); }

} // namespace quorvel
