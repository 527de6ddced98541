#pragma once

#include "../platform/foundation/IndexSet.h"
#include "TOLVLineStyle.h"
#include <TOLVMath/Export.h>

#include <TOLVMath/TOLVAxisData.h>

#include <any>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace TOLVGraphing {

/// One data series: abscissae, ordinates, a name and a line style. The abscissae are expected in ascending order. Where the two lengths differ, the samples up to the
/// shorter one count, unless who draws them says otherwise. A change announces nothing: whoever makes it asks the view for redisplay. A copy shares samples, line style and dictionary.
class TOLV_EXPORT TOLVGraphData {
public:
    /// The samples of one coordinate, in data units.
    using Samples = std::shared_ptr<const TOLVAxisData>;
    /// What a host notes of a series, by names of its own.
    using InfoDictionary = std::map<std::string, std::any>;

    /// A series without samples and with a solid black line 1 point wide.
    TOLVGraphData();

    /// A series of the first two vectors (shared, may be null) of the list, X and Y; throws Exception "BadGraphData" when it has fewer.
    [[nodiscard]] static std::shared_ptr<TOLVGraphData> graphDataWithDataArray(std::span<const Samples> vectors);
    /// A series of the samples (shared, may be null) with a solid line 1 point wide in the colour (black for none), or with the line style (shared, null for none).
    [[nodiscard]] static std::shared_ptr<TOLVGraphData> graphDataWithX(Samples x, Samples y, const std::optional<Color>& color);
    [[nodiscard]] static std::shared_ptr<TOLVGraphData> graphDataWithX(Samples x, Samples y, std::shared_ptr<TOLVLineStyle> lineStyle);
    /// The colour goes to the default style, which the given style then replaces: the series has the given style's own colour.
    [[nodiscard]] static std::shared_ptr<TOLVGraphData> graphDataWithX(Samples x, Samples y, const std::optional<Color>& color, std::shared_ptr<TOLVLineStyle> lineStyle);

    /// Shared. In data units; null while there are none.
    [[nodiscard]] const Samples& X() const { return m_x; }
    void setX(Samples x) { m_x = std::move(x); }
    /// Shared, as X.
    [[nodiscard]] const Samples& Y() const { return m_y; }
    void setY(Samples y) { m_y = std::move(y); }
    /// Copied. Nothing by default.
    [[nodiscard]] const std::optional<std::string>& name() const { return m_name; }
    void setName(std::optional<std::string> name) { m_name = std::move(name); }
    /// Shared: a change of the style shows in every series that has it. Null draws as each strategy says.
    [[nodiscard]] const std::shared_ptr<TOLVLineStyle>& lineStyle() const { return m_lineStyle; }
    void setLineStyle(std::shared_ptr<TOLVLineStyle> lineStyle) { m_lineStyle = std::move(lineStyle); }
    /// The line style's colour; nothing without a style.
    [[nodiscard]] std::optional<Color> color() const;
    /// Sets the line style's colour, for every series that shares the style; does nothing without a style.
    void setColor(const std::optional<Color>& color);
    /// Shared. The host's own; never read here. Null by default.
    [[nodiscard]] const std::shared_ptr<InfoDictionary>& infoDictionary() const { return m_infoDictionary; }
    void setInfoDictionary(std::shared_ptr<InfoDictionary> dictionary) { m_infoDictionary = std::move(dictionary); }

    /// The ordinate (data units, may be NaN) of the sample whose abscissa is nearest to x, the first of several; `actualX`, if given, receives that abscissa. Samples whose distance is NaN are
    /// passed over. Without a nearest sample (no samples, x not finite, or every one farther than about 1.8e19, whose square is no float) one line goes to the log, the answer is 0 and `actualX` is not touched.
    /// In a TOLVRealVector that ascends the place is found by halving, otherwise by looking through all samples.
    [[nodiscard]] float YValueAtX(float x, float* actualX = nullptr) const;

    /// A series of the samples in the range (shared, not copied) with the same line style (shared), without name and dictionary; what lies past the end of X or Y is cut off. Stops the program with a message when X or Y is null
    /// or not a TOLVRealVector: ask first.
    [[nodiscard]] std::shared_ptr<TOLVGraphData> graphDataInRange(IndexRange range) const;

private:
    Samples m_x;
    Samples m_y;
    std::optional<std::string> m_name;
    std::shared_ptr<TOLVLineStyle> m_lineStyle;
    std::shared_ptr<InfoDictionary> m_infoDictionary;
};

} // namespace TOLVGraphing
