#include "ViewModels/SearchText.h"

#include <QLocale>

namespace wrapio {

SearchText::SearchText(const QString& text) {
    const QString composed = text.normalized(QString::NormalizationForm_C);
    m_plain = composed.toCaseFolded();
    m_local = QLocale().toLower(composed).toCaseFolded();
}

bool SearchText::contains(const SearchText& needle) const {
    return m_plain.contains(needle.m_plain) || m_local.contains(needle.m_local);
}

}  // namespace wrapio
