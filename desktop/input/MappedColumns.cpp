#include <desktop/input/MappedColumns.h>

#include <desktop/input/MappedFile.h>

#include <TOLVMath/ExtremePyramid.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

namespace TOLVGraphing::input {

namespace {

/// Samples between two looks at whether anyone wants to cancel.
constexpr std::size_t kBlockSamples = std::size_t{1} << 20;

class ColumnMapper {
public:
    ColumnMapper(ByteSource& source, const ReadSettings& settings, std::shared_ptr<const MappedFile> file) : m_source(source), m_settings(settings), m_file(std::move(file)) {}

    void take(MeasurementColumn& column, std::uint64_t offset, std::size_t rowCount)
    {
        const auto* first = reinterpret_cast<const float*>(m_file->bytes().data() + offset);
        const FileColumn place{m_file->identity(), offset, sizeof(float), {first, rowCount}};
        const bool isKept = m_settings.extremesFolder && m_settings.extremesFolder->takes(place);
        std::optional<ColumnExtremes> known = isKept ? kept(place) : std::nullopt;
        if (known)
            m_source.pass(rowCount * sizeof(float));
        else
            known = found(place, isKept);
        column.gapCount = known->gapCount;
        column.values = ColumnValues(m_file, place.samples, std::move(known->pyramid));
        m_file->requireAllBytes(m_source.name());
    }

private:
    std::optional<ColumnExtremes> kept(const FileColumn& place)
    {
        m_file->expectAccess(MappedFile::Access::Scattered);
        auto extremes = m_settings.extremesFolder->extremesOf(place);
        m_file->expectAccess(MappedFile::Access::Usual);
        return extremes;
    }

    /// Reads the samples once, which everything to come needs in memory anyway.
    ColumnExtremes found(const FileColumn& place, bool isToBeKept)
    {
        ColumnExtremes extremes;
        m_file->expectAccess(MappedFile::Access::Sequential);
        for (auto rest = place.samples; !rest.empty();) {
            const auto block = rest.first(std::min(rest.size(), kBlockSamples));
            extremes.gapCount += static_cast<std::size_t>(std::count_if(block.begin(), block.end(), [](float value) { return std::isnan(value); }));
            m_source.pass(block.size_bytes());
            rest = rest.subspan(block.size());
        }
        m_file->expectAccess(MappedFile::Access::Usual);
        if (!isToBeKept)
            return extremes;
        extremes.pyramid = std::make_shared<const ExtremePyramid>(place.samples);
        // What was written to the file meanwhile may be in only some of the extremes.
        if (!m_file->hasLostPages() && m_source.identity() == m_file->identity())
            m_settings.extremesFolder->keep(place, extremes);
        return extremes;
    }

    ByteSource& m_source;
    const ReadSettings& m_settings;
    std::shared_ptr<const MappedFile> m_file;
};

} // namespace

bool mapColumns(ByteSource& source, const ReadSettings& settings, std::uint64_t rowCount, MeasurementTable& table)
{
    const std::uint64_t offset = source.placeInFile();
    if (std::endian::native != std::endian::little || !source.totalBytes() || *source.totalBytes() < settings.shortestMappedFile || offset % alignof(float) != 0)
        return false;
    const auto file = source.mappedFile();
    const std::uint64_t columnBytes = rowCount * sizeof(float);
    if (!file || offset > file->bytes().size() || columnBytes * table.columns.size() > file->bytes().size() - offset)
        return false;
    ColumnMapper mapper(source, settings, file);
    for (std::size_t index = 0; index < table.columns.size(); ++index)
        mapper.take(table.columns[index], offset + index * columnBytes, static_cast<std::size_t>(rowCount));
    return true;
}

} // namespace TOLVGraphing::input
