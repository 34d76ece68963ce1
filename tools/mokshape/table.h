#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace mokshape {

/// Columns of text, aligned for people. Neighbouring columns may stand under a common heading.
class Table {
  public:
    enum class Side { eLeft, eRight };

    /// Columns that follow each other with the same group, if not empty, share its heading.
    void addText(const std::string& group, const std::string& title, std::vector<std::string> cells, Side side);

    using Numbers = std::vector<std::optional<double>>;
    /// Rounded so that the largest number of the column keeps about five digits; "-" for none. Those of `totals` stand
    /// below the others and are rounded like them, however large they are.
    void addNumbers(const std::string& group, const std::string& title, const Numbers& values,
                    const Numbers& totals = {});
    /// Rounded to so many decimals; "-" for none.
    void addNumbers(const std::string& group, const std::string& title, const Numbers& values, int decimals);

    /// Heading lines and rows, without blanks at the ends of lines.
    std::string text() const;

  private:
    struct Column {
        std::string group;
        std::string title;
        std::vector<std::string> cells;
        Side side = Side::eRight;
        std::size_t width = 0;
    };

    /// Blanks between a column and the one before it: fewer in a group.
    std::size_t gapBefore(std::size_t column) const;
    std::string groupLine() const;

    std::vector<Column> columns_;
};

}  // namespace mokshape
