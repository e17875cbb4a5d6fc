#include "model/xml_guard.h"

#include <array>
#include <cctype>
#include <string_view>
#include <vector>

namespace kvn::model {
namespace {

constexpr std::string_view kCdataStart = "<![CDATA[";
constexpr std::string_view kCdataEnd = "]]>";

// Constructs that have no elements inside, by their first and last characters.
struct FlatConstruct {
    std::string_view start;
    std::string_view end;
};
constexpr std::array<FlatConstruct, 3> kFlatConstructs{{{"<!--", "-->"}, {kCdataStart, kCdataEnd}, {"<!", ">"}}};

// Where a text of white space only stands in the document.
struct BlankText {
    std::size_t begin;
    std::size_t end;
};

// Makes every line end a single line feed, as TinyXML itself does with a file that it opens.
void NormalizeLineEnds(std::string& document) {
    std::size_t from = document.find('\r');
    std::size_t to = from;
    while (from < document.size()) {
        const bool isReturn = document[from] == '\r';
        if (isReturn && from + 1 < document.size() && document[from + 1] == '\n') ++from;
        document[to++] = isReturn ? '\n' : document[from];
        ++from;
    }
    if (to < document.size()) document.resize(to);
}

// TinyXML's own notions of white space and of a name's first character.
bool IsBlank(char character) {
    return std::isspace(static_cast<unsigned char>(character)) != 0;
}
bool StartsName(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 127 || std::isalpha(byte) != 0 || byte == '_';
}

// One pass over a document's tags, keeping count of what TinyXML would nest. It may count more than TinyXML, never
// less.
class StructureCheck {
public:
    explicit StructureCheck(std::string_view checkedDocument) : document(checkedDocument) {}

    // False when the document must not be parsed.
    bool Run() {
        while (true) {
            position = document.find('<', position);
            if (position == std::string_view::npos) return true;
            if (!PassConstruct()) return false;
        }
    }

    const std::vector<BlankText>& BlankTexts() const { return blankTexts; }

private:
    std::string_view Rest() const { return document.substr(position); }

    // Passes whatever begins at the current "<".
    bool PassConstruct() {
        const std::string_view rest = Rest();
        for (const FlatConstruct& construct : kFlatConstructs) {
            if (rest.starts_with(construct.start)) return PassTo(construct.end, construct.start.size());
        }
        if (rest.starts_with("<?")) return depth == 0 && PassTo(">", 2);
        if (rest.starts_with("</")) {
            if (depth > 0) --depth;
            return PassTo(">", 2);
        }
        return PassStartTag();
    }

    bool PassTo(std::string_view end, std::size_t after) {
        const std::size_t found = document.find(end, position + after);
        if (found == std::string_view::npos) return false;
        position = found + end.size();
        return true;
    }

    bool PassStartTag() {
        const std::size_t begin = position;
        const std::size_t end = FindTagEnd(begin + 1);
        if (end == std::string_view::npos) return false;
        position = end + 1;
        if (!StartsName(document[begin + 1])) return true;
        if (++elements > kMaxXmlElements) return false;
        if (document[end - 1] == '/') return true;
        NoteBlankText();
        return ++depth <= kMaxXmlDepth;
    }

    // The ">" that ends the tag, past quoted attribute values; npos when it has none within the limit.
    std::size_t FindTagEnd(std::size_t from) const {
        const std::string_view tag = document.substr(from, kMaxXmlTagBytes);
        std::size_t at = tag.find_first_of("\"'>");
        while (at != std::string_view::npos && tag[at] != '>') {
            const std::size_t closing = tag.find(tag[at], at + 1);
            if (closing == std::string_view::npos) return closing;
            at = tag.find_first_of("\"'>", closing + 1);
        }
        return at == std::string_view::npos ? at : from + at;
    }

    // Notes the text that begins here when it is white space up to an end tag.
    void NoteBlankText() {
        std::size_t end = position;
        while (const std::size_t length = BlankLengthAt(end)) end += length;
        if (end > position && document.substr(end).starts_with("</")) blankTexts.push_back({position, end});
    }

    // The length of the white-space character at this place, written as it is or as a reference; 0 when there is none.
    std::size_t BlankLengthAt(std::size_t at) const {
        if (at >= document.size()) return 0;
        if (IsBlank(document[at])) return 1;
        for (const std::string_view reference : {"&#x09;", "&#x0A;", "&#x0B;", "&#x0C;", "&#x0D;"}) {
            if (document.substr(at).starts_with(reference)) return reference.size();
        }
        return 0;
    }

    std::string_view document;
    std::size_t position = 0;
    std::size_t depth = 0;
    std::size_t elements = 0;
    std::vector<BlankText> blankTexts;
};

// The characters of a text of white space, references resolved.
std::string BlankCharacters(std::string_view text) {
    std::string characters;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '&') {
            characters += text[at];
            continue;
        }
        constexpr std::size_t kReferenceLength = 6;
        const char digit = text[at + 4];
        characters += static_cast<char>(digit == '9' ? '\t' : digit - 'A' + '\n');
        at += kReferenceLength - 1;
    }
    return characters;
}

std::string WithBlankTextsKept(const std::string& document, const std::vector<BlankText>& blankTexts) {
    std::string kept;
    kept.reserve(document.size() + blankTexts.size() * (kCdataStart.size() + kCdataEnd.size()));
    std::size_t copied = 0;
    for (const BlankText& blank : blankTexts) {
        kept.append(document, copied, blank.begin - copied);
        kept += kCdataStart;
        kept += BlankCharacters(std::string_view(document).substr(blank.begin, blank.end - blank.begin));
        kept += kCdataEnd;
        copied = blank.end;
    }
    return kept.append(document, copied);
}

}  // namespace

std::optional<std::string> PrepareXml(std::string document) {
    if (document.empty() || document.size() > kMaxXmlBytes) return std::nullopt;
    if (document.find('\0') != std::string::npos) return std::nullopt;
    NormalizeLineEnds(document);
    StructureCheck check(document);
    if (!check.Run()) return std::nullopt;
    if (check.BlankTexts().empty()) return document;
    return WithBlankTextsKept(document, check.BlankTexts());
}

}  // namespace kvn::model
