#pragma once
#include <QString>
#include <string>
#include <string_view>

namespace quorvel::qt {

inline QString to_qt(std::string_view s) {
    return QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size()));
}
inline std::string to_std(const QString& s) { return s.toStdString(); }

} // namespace quorvel::qt
