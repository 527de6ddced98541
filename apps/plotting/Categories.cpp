#include "Categories.h"

#include <TOLVGraphing/axes/NearestIndex.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace TOLVGraphing::app {

namespace {

std::size_t rowCount(const FileSeries& file)
{
    return file.selection.categoryTexts.size();
}

} // namespace

Categories::Categories(const std::vector<FileSeries>& files)
{
    const auto longest = std::max_element(files.begin(), files.end(), [](const FileSeries& one, const FileSeries& other) { return rowCount(one) < rowCount(other); });
    m_texts = std::make_shared<const std::vector<std::string>>(longest->selection.categoryTexts);
    m_abscissae = longest->selection.series.front().data->X();
}

std::optional<double> Categories::abscissaOf(const std::string& text) const
{
    const auto found = std::find(m_texts->begin(), m_texts->end(), text);
    if (found == m_texts->end())
        return std::nullopt;
    return static_cast<double>(m_abscissae->components()[found - m_texts->begin()]);
}

const std::string& Categories::textNearest(double value) const
{
    if (std::isnan(value))
        return m_texts->front();
    const auto abscissa = [&](std::size_t i) { return static_cast<double>(m_abscissae->components()[i]); };
    const std::size_t nearest = nearestIndexOfOrdered(
        m_abscissae->length(), [&](std::size_t i) { return abscissa(i) >= value; }, [&](std::size_t i) { return std::abs(abscissa(i) - value); });
    return (*m_texts)[nearest];
}

CategoryFormatter::CategoryFormatter(Categories categories) : m_categories(std::move(categories)) {}

std::optional<std::string> CategoryFormatter::stringFromNumber(double number) const
{
    return m_categories.textNearest(number);
}

std::shared_ptr<NumberFormatter> CategoryFormatter::copy() const
{
    return std::make_shared<CategoryFormatter>(m_categories);
}

} // namespace TOLVGraphing::app
