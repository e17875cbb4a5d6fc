// The documents and the sources of this tree as text, and the tables of a document.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvn::docs {

// A file by its path from the tree's root. Throws std::runtime_error if there is none.
std::string ReadFile(const std::string& path);
// A document with its line breaks replaced by blanks.
std::string ReadProse(const std::string& path);
// All sources of a folder, one after another.
std::string ReadSources(const std::string& folder);

// A text of ASCII characters.
inline std::string Narrow(std::wstring_view ascii) {
    return {ascii.begin(), ascii.end()};
}

// The cells of a row without the blanks and code marks around them.
using Row = std::vector<std::string>;

struct Table {
    Row header;
    std::vector<Row> rows;

    std::vector<std::string> Column(const std::string& name) const;
    // The cells of two columns, row by row.
    std::vector<std::pair<std::string, std::string>> Columns(const std::string& first, const std::string& second) const;
};

// Every table of a Markdown document, in order.
std::vector<Table> TablesOf(const std::string& document);
// The tables that begin with this column.
std::vector<Table> TablesWith(const std::string& document, const std::string& firstColumn);
// One of them; throws std::out_of_range if there are fewer.
Table TableWith(const std::string& document, const std::string& firstColumn, std::size_t index = 0);

// A text of resources/strings.rc by its name, such as IDS_CAPTION.
struct StringRow {
    std::string name;
    std::string english;
    std::string japanese;  // the English one if it is the same in every language
};

std::vector<StringRow> StringTable();
// In English. Throws std::runtime_error if there is no such text.
std::string TextOf(const std::string& name);

}  // namespace kvn::docs
