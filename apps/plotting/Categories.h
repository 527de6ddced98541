#pragma once

#include "FileSeries.h"

#include <TOLVGraphing/data/TOLVGraphData.h>
#include <TOLVGraphing/platform/text/NumberFormatter.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TOLVGraphing::app {

/// The categories of a graph: those of the file with the longest series, the first of several. A value; copies share the texts.
class Categories {
public:
    /// At least one file, and every file has series with finite abscissae that ascend and as many category texts.
    explicit Categories(const std::vector<FileSeries>& files);

    [[nodiscard]] const std::vector<std::string>& texts() const { return *m_texts; }
    /// The abscissa of the first category that is named so.
    [[nodiscard]] std::optional<double> abscissaOf(const std::string& text) const;
    /// The text of the category whose abscissa is nearest to the value; of a value that is NaN, that of the first one.
    [[nodiscard]] const std::string& textNearest(double value) const;

private:
    std::shared_ptr<const std::vector<std::string>> m_texts;
    TOLVGraphData::Samples m_abscissae;
};

/// Writes the categories' texts in place of their abscissae, for the badges of markers.
class CategoryFormatter final : public NumberFormatter {
public:
    explicit CategoryFormatter(Categories categories);

    [[nodiscard]] std::optional<std::string> stringFromNumber(double number) const override;
    [[nodiscard]] std::shared_ptr<NumberFormatter> copy() const override;

private:
    Categories m_categories;
};

} // namespace TOLVGraphing::app
