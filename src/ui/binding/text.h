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
inline QString WithoutMnemonic(QString caption) {
    return caption.replace(QLatin1Char('&'), QLatin1String("&&"));
}
inline QString WithoutMnemonic(const std::string& bytes) {
    return WithoutMnemonic(FromBytes(bytes));
}

/// A caption with its first letter or digit that is not `taken` marked as the key to press; from then on it is taken.
inline QString WithMnemonic(const std::string& bytes, QString& taken) {
    const QString caption = FromBytes(bytes);
    for (qsizetype place = 0; place < caption.size(); ++place) {
        const QChar key = caption[place].toUpper();
        if (key.isLetterOrNumber() && !taken.contains(key)) {
            taken += key;
            return WithoutMnemonic(caption.left(place)) + u'&' + WithoutMnemonic(caption.mid(place));
        }
    }
    return WithoutMnemonic(caption);
}

} // namespace nrv::ui
