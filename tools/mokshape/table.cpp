#include "tools/mokshape/table.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "tools/io/text.h"

namespace mokshape {

namespace {

constexpr int digits = 5;
constexpr int mostDecimals = 8;

/// The power of ten of the largest number.
int magnitudeOf(const Table::Numbers& values) {
    double largest = 0.0;
    for (const auto& value : values)
        largest = std::max(largest, std::fabs(value.value_or(0.0)));
    return largest > 0.0 ? static_cast<int>(std::floor(std::log10(largest))) : 0;
}

void pad(std::string& line, const std::string& text, std::size_t width, Table::Side side) {
    const std::size_t blanks = width > text.size() ? width - text.size() : 0;
    if (side == Table::Side::eRight)
        line.append(blanks, ' ');
    line += text;
    if (side == Table::Side::eLeft)
        line.append(blanks, ' ');
}

void endLine(std::string& text, std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + '\n';
}

}  // namespace

void Table::addText(const std::string& group, const std::string& title, std::vector<std::string> cells, Side side) {
    std::size_t width = title.size();
    for (const std::string& cell : cells)
        width = std::max(width, cell.size());
    columns_.push_back({group, title, std::move(cells), side, width});
}

void Table::addNumbers(const std::string& group, const std::string& title, const Numbers& values, int decimals) {
    std::vector<std::string> cells;
    for (const auto& value : values)
        cells.push_back(value ? formatFixed(*value, decimals) : "-");
    addText(group, title, std::move(cells), Side::eRight);
}

void Table::addNumbers(const std::string& group, const std::string& title, const Numbers& values,
                       const Numbers& totals) {
    Numbers all = values;
    all.insert(all.end(), totals.begin(), totals.end());
    const int decimals = std::max(digits - 1 - magnitudeOf(values), 0);
    if (magnitudeOf(all) < 2 * digits && decimals <= mostDecimals)
        return addNumbers(group, title, all, decimals);
    std::vector<std::string> cells;
    for (const auto& value : all)
        cells.push_back(value ? formatSignificant(*value, digits) : "-");
    addText(group, title, std::move(cells), Side::eRight);
}

std::size_t Table::gapBefore(std::size_t column) const {
    if (column == 0)
        return 0;
    const std::string& group = columns_[column].group;
    return !group.empty() && group == columns_[column - 1].group ? 1 : 2;
}

std::string Table::groupLine() const {
    std::string line;
    std::size_t end = 0;  // of the columns so far; the line itself may be shorter
    for (std::size_t i = 0; i < columns_.size();) {
        const Column& first = columns_[i];
        const std::size_t start = end + gapBefore(i);
        end = start + first.width;
        std::size_t next = i + 1;
        for (; next < columns_.size() && gapBefore(next) == 1; ++next)
            end += 1 + columns_[next].width;
        const std::size_t slack = end - start > first.group.size() ? end - start - first.group.size() : 0;
        line.resize(std::max(line.size(), start + (first.side == Side::eRight ? slack / 2 : 0)), ' ');
        line += first.group;
        i = next;
    }
    return line;
}

std::string Table::text() const {
    std::string text;
    if (columns_.empty())
        return text;
    endLine(text, groupLine());
    const auto addLine = [&](auto cellOf) {
        std::string line;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            line.append(gapBefore(i), ' ');
            pad(line, cellOf(columns_[i]), columns_[i].width, columns_[i].side);
        }
        endLine(text, std::move(line));
    };
    addLine([](const Column& column) { return column.title; });
    for (std::size_t row = 0; row < columns_.front().cells.size(); ++row)
        addLine([row](const Column& column) { return column.cells[row]; });
    return text;
}

}  // namespace mokshape
