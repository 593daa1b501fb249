#include "Platform/DrawingGuard.h"

#include <QHash>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>
#include <optional>
#include <vector>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t mostElements = 100'000;
constexpr std::size_t mostUses = 1'000;
constexpr int deepestNesting = 256;

/// A reference to an element elsewhere in the drawing, which is drawn once more in its place.
struct Use {
    std::size_t at;  ///< number of the <use> in document order
    QString target;
};

struct Range {
    std::size_t begin;
    std::size_t end;
};

/// What a drawing is made of: elements are numbered in document order, so a subtree is a range of numbers.
struct Outline {
    std::size_t elements = 0;
    std::vector<Use> uses;
    QHash<QString, Range> named;
};

/// Counts what is really drawn. A drawing of a few hundred bytes can stand for billions of elements.
class DrawnElements {
public:
    explicit DrawnElements(const Outline& outline)
        : m_outline(outline) {}

    /// The number of elements drawn for a range, references followed; nothing when there are too many or they go round
    /// in a circle.
    std::optional<std::size_t> count(const Range& range) {
        std::size_t sum = range.end - range.begin;
        for (const Use& use : m_outline.uses) {
            if (use.at < range.begin || use.at >= range.end)
                continue;
            const auto referred = countNamed(use.target);
            if (!referred)
                return std::nullopt;
            sum += *referred;
            if (sum > mostElements)
                return std::nullopt;
        }
        return sum;
    }

private:
    std::optional<std::size_t> countNamed(const QString& name) {
        const auto range = m_outline.named.find(name);
        if (range == m_outline.named.end())
            return 0;
        if (const auto known = m_known.find(name); known != m_known.end())
            return *known;
        m_known.insert(name, std::nullopt);  // stays so when it turns up again inside itself
        const auto result = count(*range);
        m_known.insert(name, result);
        return result;
    }

    const Outline& m_outline;
    QHash<QString, std::optional<std::size_t>> m_known;
};

/// True when every url(…) in a style points into the drawing, and nothing is imported.
bool isSelfContainedStyle(QStringView style) {
    static const QRegularExpression outside(u"@import|url\\(\\s*[\"']?\\s*(?!#)[^\"'\\s]"_s,
                                            QRegularExpression::CaseInsensitiveOption);
    // An escape could spell any of these words in another way.
    return !style.contains(u'\\') && !outside.match(style).hasMatch();
}

/// Reads a drawing once, from beginning to end.
class DrawingReader {
public:
    DrawingReader(const QByteArray& svg, const DrawingRules& rules)
        : m_xml(svg)
        , m_rules(rules) {}

    /// Nothing as soon as something forbidden is met.
    std::optional<Outline> read() {
        while (!m_xml.atEnd()) {
            if (!acceptToken(m_xml.readNext()))
                return std::nullopt;
        }
        if (m_xml.hasError() || m_outline.uses.size() > mostUses)
            return std::nullopt;
        return std::move(m_outline);
    }

private:
    bool acceptToken(QXmlStreamReader::TokenType token) {
        switch (token) {
        case QXmlStreamReader::StartElement:
            return acceptElement();
        case QXmlStreamReader::EndElement:
            endElement();
            return true;
        case QXmlStreamReader::Characters:
            return m_styleDepth == 0 || isSelfContainedStyle(m_xml.text());
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
        case QXmlStreamReader::Invalid:
            return false;
        case QXmlStreamReader::ProcessingInstruction:
            return m_xml.processingInstructionTarget() != "xml-stylesheet"_L1;
        case QXmlStreamReader::NoToken:
        case QXmlStreamReader::StartDocument:
        case QXmlStreamReader::EndDocument:
        case QXmlStreamReader::Comment:
            return true;
        }
        return false;
    }

    bool acceptElement() {
        const QStringView name = m_xml.name();
        if (m_open.empty() && name != "svg"_L1)
            return false;
        const bool isText = name == "text"_L1 || name == "textArea"_L1;
        if ((isText && !m_rules.textsAllowed) || name == "image"_L1)
            return false;
        const std::size_t number = m_outline.elements++;
        if (m_outline.elements > mostElements || m_open.size() >= deepestNesting)
            return false;
        m_open.push_back({number, m_xml.attributes().value("id"_L1).toString()});
        m_styleDepth += name == "style"_L1 ? 1 : 0;
        const auto attributes = m_xml.attributes();
        return std::all_of(attributes.begin(), attributes.end(),
                           [&](const QXmlStreamAttribute& attribute) { return acceptAttribute(name, attribute); });
    }

    bool acceptAttribute(QStringView element, const QXmlStreamAttribute& attribute) {
        if (attribute.name() != "href"_L1)
            return isSelfContainedStyle(attribute.value());
        if (element == "a"_L1)  // leads elsewhere, but loads nothing
            return true;
        const QStringView target = attribute.value().trimmed();
        if (!target.startsWith(u'#'))
            return false;
        if (element == "use"_L1)
            m_outline.uses.push_back({m_open.back().number, target.mid(1).toString()});
        return true;
    }

    void endElement() {
        const Open closed = std::move(m_open.back());
        m_open.pop_back();
        m_styleDepth -= m_xml.name() == "style"_L1 ? 1 : 0;
        if (!closed.id.isEmpty())
            m_outline.named.insert(closed.id, {closed.number, m_outline.elements});
    }

    struct Open {
        std::size_t number;
        QString id;
    };

    QXmlStreamReader m_xml;
    DrawingRules m_rules;
    Outline m_outline;
    std::vector<Open> m_open;
    int m_styleDepth = 0;
};

}  // namespace

bool isHarmlessDrawing(const QByteArray& svg, const DrawingRules& rules) {
    if (svg.size() > largestDrawingBytes)
        return false;
    const auto outline = DrawingReader(svg, rules).read();
    return outline && DrawnElements(*outline).count({0, outline->elements}).has_value();
}

}  // namespace wrapio
