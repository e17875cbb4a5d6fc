#include "tests/docs/documents.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace kvn::docs {
namespace {

namespace fs = std::filesystem;

const fs::path kRoot = KVN_SOURCE_FOLDER;

std::string WithoutBlanks(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? std::string() : text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

// Removes the code marks of a cell that is all code. A text that contains a code mark is between double marks and
// blanks.
std::string WithoutCodeMarks(const std::string& cell) {
    const std::size_t marks = std::min(cell.find_first_not_of('`'), cell.size());
    const bool isCode = marks > 0 && cell.find(cell.substr(0, marks), marks) + marks == cell.size();
    if (!isCode) return cell;
    const std::string code = cell.substr(marks, cell.size() - 2 * marks);
    return marks == 1 ? code : WithoutBlanks(code);
}

Row CellsOf(const std::string& line) {
    Row cells;
    std::istringstream stream(line.substr(1));
    for (std::string cell; std::getline(stream, cell, '|');) cells.push_back(WithoutCodeMarks(WithoutBlanks(cell)));
    if (!cells.empty() && line.back() != '|') cells.pop_back();
    return cells;
}

bool IsRule(const Row& cells) {
    return std::all_of(cells.begin(), cells.end(), [](const std::string& cell) { return cell == "---"; });
}

std::size_t IndexOf(const Table& table, const std::string& column) {
    const auto found = std::find(table.header.begin(), table.header.end(), column);
    if (found == table.header.end()) throw std::runtime_error("no column " + column);
    return static_cast<std::size_t>(found - table.header.begin());
}

}  // namespace

std::string ReadFile(const std::string& path) {
    std::ifstream file(kRoot / path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string ReadProse(const std::string& path) {
    return std::regex_replace(ReadFile(path), std::regex("\\n *"), " ");
}

std::string ReadSources(const std::string& folder) {
    std::string sources;
    for (const fs::directory_entry& entry : fs::directory_iterator(kRoot / folder)) {
        if (entry.path().extension() == ".cpp") sources += ReadFile(folder + '/' + entry.path().filename().string());
    }
    return sources;
}

std::vector<std::string> Table::Column(const std::string& name) const {
    std::vector<std::string> cells;
    for (const Row& row : rows) cells.push_back(row.at(IndexOf(*this, name)));
    return cells;
}

std::vector<std::pair<std::string, std::string>> Table::Columns(const std::string& first,
                                                                const std::string& second) const {
    std::vector<std::pair<std::string, std::string>> cells;
    for (const Row& row : rows) cells.emplace_back(row.at(IndexOf(*this, first)), row.at(IndexOf(*this, second)));
    return cells;
}

std::vector<Table> TablesOf(const std::string& document) {
    std::vector<Table> tables;
    std::istringstream stream(document);
    bool isInTable = false;
    for (std::string line; std::getline(stream, line);) {
        const bool isRow = !line.empty() && line.front() == '|';
        if (isRow && !isInTable) {
            tables.push_back({CellsOf(line), {}});
        } else if (isRow) {
            if (Row cells = CellsOf(line); !IsRule(cells)) tables.back().rows.push_back(std::move(cells));
        }
        isInTable = isRow;
    }
    return tables;
}

std::vector<Table> TablesWith(const std::string& document, const std::string& firstColumn) {
    std::vector<Table> tables = TablesOf(document);
    std::erase_if(tables, [&](const Table& table) { return table.header.front() != firstColumn; });
    return tables;
}

Table TableWith(const std::string& document, const std::string& firstColumn, std::size_t index) {
    return TablesWith(document, firstColumn).at(index);
}

std::vector<StringRow> StringTable() {
    static const std::regex entry("(IDS_\\w+)\\s+(?:UI_TEXT\\(\\s*)?\"([^\"]*)\"(?:,\\s*\"([^\"]*)\")?");
    const std::string resources = ReadFile("resources/strings.rc");
    std::vector<StringRow> rows;
    for (std::sregex_iterator found(resources.begin(), resources.end(), entry), end; found != end; ++found) {
        const std::smatch& match = *found;
        rows.push_back({match[1], match[2], match[3].matched ? match[3] : match[2]});
    }
    return rows;
}

std::string TextOf(const std::string& name) {
    for (const StringRow& row : StringTable()) {
        if (row.name == name) return row.english;
    }
    throw std::runtime_error("no text " + name);
}

}  // namespace kvn::docs
