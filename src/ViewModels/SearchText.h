// Finding a text in another the way people expect it.
#pragma once

#include <QString>

namespace wrapio {

/// A text prepared for searching: case and the ways of composing a letter play no part.
class SearchText {
public:
    SearchText() = default;
    explicit SearchText(const QString& text);

    /// True when `needle` is part of this text, by the rules of the user's language or by those of none. Two rules,
    /// since in some languages "I" and "i" are different letters, but not in the names of sites.
    [[nodiscard]] bool contains(const SearchText& needle) const;

private:
    QString m_plain;
    QString m_local;
};

}  // namespace wrapio
