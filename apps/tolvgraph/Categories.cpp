#include "Categories.h"

#include <algorithm>
#include <cstddef>
#include <span>
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
    const std::span<const float> abscissae(m_abscissae->components(), m_abscissae->length());
    auto nearest = std::lower_bound(abscissae.begin(), abscissae.end(), value, [](float abscissa, double number) { return static_cast<double>(abscissa) < number; });
    if (nearest == abscissae.end())
        --nearest;
    if (nearest != abscissae.begin() && value - static_cast<double>(*(nearest - 1)) <= static_cast<double>(*nearest) - value)
        --nearest;
    return (*m_texts)[static_cast<std::size_t>(nearest - abscissae.begin())];
}

CategoryFormatter::CategoryFormatter(Categories categories)
    : m_categories(std::move(categories))
{
}

std::optional<std::string> CategoryFormatter::stringFromNumber(double number) const
{
    return m_categories.textNearest(number);
}

std::shared_ptr<NumberFormatter> CategoryFormatter::copy() const
{
    return std::make_shared<CategoryFormatter>(m_categories);
}

} // namespace TOLVGraphing::app
