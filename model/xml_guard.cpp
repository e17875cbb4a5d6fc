#include "model/xml_guard.h"

#include <algorithm>
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

// White-space characters as TinyXML writes them into a text; a blank stands for itself.
struct BlankReference {
    std::string_view reference;
    char character;
};
constexpr std::array<BlankReference, 5> kBlankReferences{
    {{"&#x09;", '\t'}, {"&#x0A;", '\n'}, {"&#x0B;", '\v'}, {"&#x0C;", '\f'}, {"&#x0D;", '\r'}}};

// The reference at the beginning of the text, or null.
const BlankReference* BlankReferenceAt(std::string_view text) {
    for (const BlankReference& row : kBlankReferences) {
        if (text.starts_with(row.reference)) return &row;
    }
    return nullptr;
}

// The place of a text of only white space in the document.
struct BlankText {
    std::size_t begin;
    std::size_t end;
};

// Makes every line end a single line feed, as TinyXML itself does when it opens a file.
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

bool IsTagMark(char character) {
    return character == '"' || character == '\'' || character == '<' || character == '>' || character == '=';
}

// The next quote, bracket or equals sign; npos if there is none. The standard search would call the C library for every
// character.
std::size_t FindTagMark(std::string_view text, std::size_t from) {
    for (std::size_t at = from; at < text.size(); ++at) {
        if (IsTagMark(text[at])) return at;
    }
    return std::string_view::npos;
}

// Whether every character reference has only digits before its ";". TinyXML takes the next ";" for its end, even past
// other tags.
bool HasWholeReferences(std::string_view text) {
    for (std::size_t at = text.find("&#"); at != std::string_view::npos; at = text.find("&#", at)) {
        at += text.substr(at).starts_with("&#x") ? 3 : 2;
        at = text.find_first_not_of("0123456789abcdefABCDEF", at);
        if (at == std::string_view::npos || text[at] != ';') return false;
    }
    return true;
}

// One pass over a document's tags, keeping count of what TinyXML would nest. It may count more than TinyXML, never
// less.
class StructureCheck {
public:
    // The check overwrites declarations and instructions in the document with blanks.
    explicit StructureCheck(std::string& checkedDocument) : bytes(checkedDocument), document(checkedDocument) {}

    // False if the document must not be parsed.
    bool Run() {
        while (true) {
            const std::size_t next = std::min(document.find('<', position), document.size());
            if (!HasWholeReferences(document.substr(position, next - position))) return false;
            position = next;
            if (position == document.size()) return true;
            if (!PassConstruct()) return false;
        }
    }

    const std::vector<BlankText>& BlankTexts() const { return blankTexts; }

private:
    std::string_view Rest() const { return document.substr(position); }

    // Passes whatever begins at the current "<".
    bool PassConstruct() {
        const std::string_view rest = Rest();
        if (rest.starts_with("</")) {
            if (depth > 0) --depth;
            return PassTo(">", 2);
        }
        if (++constructs > kMaxXmlElements) return false;
        for (const FlatConstruct& construct : kFlatConstructs) {
            if (rest.starts_with(construct.start)) return PassTo(construct.end, construct.start.size());
        }
        if (rest.starts_with("<?")) return PassInstruction();
        if (rest.size() > 1 && StartsName(rest[1])) return PassStartTag();
        // TinyXML ignores anything else and only looks for its end.
        return PassTo(">", 1);
    }

    // TinyXML may read a quoted value past the end of a declaration, so it must not see any. Inside an element
    // something must still separate the texts before and after: "<!>", which TinyXML ignores.
    bool PassInstruction() {
        const std::size_t begin = position;
        if (!PassTo(">", 2)) return false;
        PassToQuestionMark();
        bytes.replace(begin, position - begin, position - begin, ' ');
        if (depth == 0) return true;
        bytes[begin] = '<';
        bytes[begin + 1] = '!';
        bytes[position - 1] = '>';
        return true;
    }

    // An instruction may contain a ">" before its "?>".
    void PassToQuestionMark() {
        if (document[position - 2] == '?') return;
        const std::size_t end = document.substr(0, document.find('<', position)).find("?>", position);
        if (end != std::string_view::npos) position = end + 2;
    }

    bool PassTo(std::string_view end, std::size_t after) {
        const std::size_t found = document.find(end, position + after);
        if (found == std::string_view::npos) return false;
        position = found + end.size();
        return true;
    }

    bool PassStartTag() {
        const std::size_t begin = position;
        const std::size_t end = PassAttributes(begin + 1);
        if (end == std::string_view::npos || !HasWholeReferences(document.substr(begin, end - begin))) return false;
        position = end + 1;
        if (depth == kMaxXmlDepth) return false;
        if (document[end - 1] == '/') return true;
        NoteBlankText();
        ++depth;
        return true;
    }

    // The position of the ">" that ends the tag, past quoted attribute values; npos if there is none, a "<" comes first
    // or there are too many attributes. Each equals sign outside quotes counts as an attribute.
    std::size_t PassAttributes(std::size_t from) {
        std::size_t attributes = 0;
        std::size_t at = FindTagMark(document, from);
        while (at != std::string_view::npos && document[at] != '>') {
            if (document[at] == '<') return std::string_view::npos;
            if (document[at] != '=')
                at = document.find(document[at], at + 1);
            else if (++attributes > kMaxXmlAttributes || ++constructs > kMaxXmlElements)
                return std::string_view::npos;
            if (at != std::string_view::npos) at = FindTagMark(document, at + 1);
        }
        return at;
    }

    // Records the text that begins here if it is white space up to an end tag.
    void NoteBlankText() {
        std::size_t end = position;
        while (const std::size_t length = BlankLengthAt(end)) end += length;
        if (end > position && document.substr(end).starts_with("</")) blankTexts.push_back({position, end});
    }

    // The length of the white-space character at this place, plain or as a reference; 0 if there is none.
    std::size_t BlankLengthAt(std::size_t at) const {
        if (at >= document.size()) return 0;
        if (IsBlank(document[at])) return 1;
        const BlankReference* reference = BlankReferenceAt(document.substr(at));
        return reference == nullptr ? 0 : reference->reference.size();
    }

    std::string& bytes;
    std::string_view document;  // the same bytes
    std::size_t position = 0;
    std::size_t depth = 0;
    std::size_t constructs = 0;
    std::vector<BlankText> blankTexts;
};

// The characters of a white-space text, with references resolved.
std::string BlankCharacters(std::string_view text) {
    std::string characters;
    while (!text.empty()) {
        const BlankReference* reference = BlankReferenceAt(text);
        characters += reference == nullptr ? text.front() : reference->character;
        text.remove_prefix(reference == nullptr ? 1 : reference->reference.size());
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
