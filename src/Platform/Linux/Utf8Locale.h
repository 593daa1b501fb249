// A locale in which libarchive takes names for the UTF-8 that they are.
#pragma once

#include <locale.h>

#include <clocale>

namespace wrapio {

/// Sets the character set of the calling thread to UTF-8, whatever the program's locale is, until this goes away.
class Utf8Locale {
public:
    Utf8Locale()
        : m_locale(::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {
        if (m_locale)
            m_previous = ::uselocale(m_locale);
    }
    ~Utf8Locale() {
        if (!m_locale)
            return;
        ::uselocale(m_previous);
        ::freelocale(m_locale);
    }
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;

private:
    locale_t m_locale;
    locale_t m_previous{};
};

}  // namespace wrapio
