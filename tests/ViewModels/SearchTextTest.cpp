#include "ViewModels/SearchText.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

bool found(const QString& needle, const QString& text) {
    return SearchText(text).contains(SearchText(needle));
}

/// Makes another language the user's, for one test.
class Language {
public:
    explicit Language(QLocale::Language language) { QLocale::setDefault(QLocale(language)); }
    ~Language() { QLocale::setDefault(m_before); }
    Language(const Language&) = delete;
    Language& operator=(const Language&) = delete;

private:
    QLocale m_before;
};

}  // namespace

TEST(SearchText, is_found_whatever_its_case) {
    EXPECT_TRUE(found(u"MAIL"_s, u"Webmail"_s));
    EXPECT_TRUE(found(u"übung"_s, u"Die ÜBUNG"_s));
    EXPECT_FALSE(found(u"mails"_s, u"Mail"_s));
}

TEST(SearchText, is_found_however_its_letters_are_composed) {
    EXPECT_TRUE(found(u"caf\u00E9"_s, u"CAFE\u0301"_s));
    EXPECT_TRUE(found(u"cafe\u0301"_s, u"Caf\u00E9"_s));
}

TEST(SearchText, tells_an_accented_letter_from_a_plain_one) {
    EXPECT_FALSE(found(u"cafe"_s, u"Caf\u00E9"_s));
}

TEST(SearchText, follows_the_rules_of_the_users_language) {
    EXPECT_FALSE(found(u"istanbul"_s, u"\u0130STANBUL"_s));
    const Language turkish(QLocale::Turkish);
    EXPECT_TRUE(found(u"istanbul"_s, u"\u0130STANBUL"_s));
    EXPECT_TRUE(found(u"\u0131sparta"_s, u"ISPARTA"_s));
}

TEST(SearchText, finds_plain_names_in_every_language) {
    const Language turkish(QLocale::Turkish);
    EXPECT_TRUE(found(u"MAIL"_s, u"mail.example.com"_s));
}

}  // namespace wrapio
