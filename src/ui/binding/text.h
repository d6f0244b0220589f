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

/// A caption with its first letter or digit that is not `taken` marked as the key to press; from then on it is taken.
inline QString WithMnemonic(const std::string& bytes, QString& taken) {
    const QString caption = FromBytes(bytes);
    for (qsizetype place = 0; place < caption.size(); ++place) {
        const QChar key = caption[place].toUpper();
        if (key.isLetterOrNumber() && !taken.contains(key)) {
            taken += key;
            const auto part = [&caption](qsizetype from, qsizetype to) {
                return WithoutMnemonic(ToBytes(caption.mid(from, to - from)));
            };
            return part(0, place) + u'&' + part(place, caption.size());
        }
    }
    return WithoutMnemonic(bytes);
}

} // namespace nrv::ui
