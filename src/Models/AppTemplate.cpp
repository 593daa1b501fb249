#include "Models/AppTemplate.h"

namespace wrapio {

using namespace Qt::StringLiterals;

const std::vector<AppTemplate>& AppTemplate::popular() {
    static const std::vector<AppTemplate> templates = {
        {QUuid::createUuid(), u"google-gmail"_s, u"Gmail"_s, u"https://mail.google.com"_s, u"template-gmail"_s,
         u"envelope.fill"_s, u"#EA4335"_s, false},
        {QUuid::createUuid(), u"google-calendar"_s, u"Google Calendar"_s, u"https://calendar.google.com"_s,
         u"template-google-calendar"_s, u"calendar"_s, u"#4285F4"_s, false},
        {QUuid::createUuid(), u"youtube"_s, u"YouTube"_s, u"https://www.youtube.com"_s, u"template-youtube"_s,
         u"play.rectangle.fill"_s, u"#FF0000"_s, false},
    };
    return templates;
}

const std::vector<AppTemplate>& AppTemplate::devTemplates() {
    static const std::vector<AppTemplate> templates = {
        {QUuid::createUuid(), u"localhost-dev"_s, u"Localhost Dev Server"_s, u"localhost:3000"_s,
         u"template-dev-server"_s, u"terminal"_s, u"#00C853"_s, true},
    };
    return templates;
}

}  // namespace wrapio
