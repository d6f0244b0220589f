#pragma once

#include <QString>

#include <string>

namespace nrv::ui {

/// The program's texts are single bytes of Latin-1.
inline QString FromBytes(const std::string& bytes) {
    return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

/// A character outside Latin-1 becomes "?".
inline std::string ToBytes(const QString& text) {
    return text.toLatin1().toStdString();
}

/// A caption where the toolkit would read "&" as a mark of the key to press.
inline QString WithoutMnemonic(const std::string& bytes) {
    return FromBytes(bytes).replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace nrv::ui
