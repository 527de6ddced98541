#pragma once

#include "../platform/foundation/PropertyValue.h"
#include "TOLVAxisExtents.h"
#include <TOLVMath/Export.h>

#include <memory>
#include <string>
#include <string_view>

namespace TOLVGraphing {

class TOLVGraph;

/// The visible ranges of a graph's axes: x horizontal, y vertical, and a z kept for drawing in space. A change of a range, or of one of its ends, is announced
/// as a change of "x", "y" or "z".
class TOLV_EXPORT TOLVGraphExtents final : public Codable, public Observable {
public:
    /// Three ranges from 0 to 0 and no graph.
    TOLVGraphExtents();
    ~TOLVGraphExtents() override;
    TOLVGraphExtents(const TOLVGraphExtents&) = delete;
    TOLVGraphExtents& operator=(const TOLVGraphExtents&) = delete;

    /// Weak. The graph that these extents belong to, or null; neither copied nor archived.
    [[nodiscard]] std::shared_ptr<TOLVGraph> graph() const { return m_graph.lock(); }
    void setGraph(std::weak_ptr<TOLVGraph> graph) { m_graph = std::move(graph); }

    /// Copied. In data units. Null only after reading an archive that lacks the range, or when set so. The object that a getter answers is the one in force: setting its ends changes
    /// these extents.
    [[nodiscard]] const std::shared_ptr<TOLVAxisExtents>& x() const { return m_x.extents; }
    void setX(const std::shared_ptr<const TOLVAxisExtents>& x) { install(m_x, x); }
    [[nodiscard]] const std::shared_ptr<TOLVAxisExtents>& y() const { return m_y.extents; }
    void setY(const std::shared_ptr<const TOLVAxisExtents>& y) { install(m_y, y); }
    [[nodiscard]] const std::shared_ptr<TOLVAxisExtents>& z() const { return m_z.extents; }
    void setZ(const std::shared_ptr<const TOLVAxisExtents>& z) { install(m_z, z); }

    /// Independent ranges, no graph.
    [[nodiscard]] std::shared_ptr<TOLVGraphExtents> copy() const;

    /// Keys "x", "y", "z".
    void encodeWithCoder(KeyedArchiver& coder) const override;
    /// A missing key leaves that range null.
    [[nodiscard]] static std::shared_ptr<TOLVGraphExtents> initWithCoder(KeyedUnarchiver& coder);
    [[nodiscard]] std::string archiveClassName() const override { return "TOLVGraphExtents"; }

    /// Asks the graph whether the value is acceptable for a key path such as "x.min"; the graph may replace it (see TOLVGraph::validateExtentsValue). False without a graph. The error is never filled and may be null. Sets nothing.
    bool validateValue(PropertyValue& value, std::string_view forKeyPath, std::string* error = nullptr) const;

private:
    struct Member {
        const char* key;
        std::shared_ptr<TOLVAxisExtents> extents;
        ObserverToken minToken = 0;
        ObserverToken maxToken = 0;
    };

    void install(Member& member, const std::shared_ptr<const TOLVAxisExtents>& extents);
    static void stopObserving(Member& member);

    std::weak_ptr<TOLVGraph> m_graph;
    Member m_x{"x", nullptr};
    Member m_y{"y", nullptr};
    Member m_z{"z", nullptr};
};

/// "x [min, max] y [min, max] z [min, max]", with "none" for a range that is null.
[[nodiscard]] TOLV_EXPORT std::string toString(const TOLVGraphExtents& extents);

} // namespace TOLVGraphing
