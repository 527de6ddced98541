#pragma once

#include <QWidget>

#include <functional>
#include <memory>

class QBoxLayout;
class QLabel;
class QLineEdit;

namespace TOLVGraphing {
class TOLVGraph;
}

namespace TOLVGraphing::app {

/// The ends of one axis's visible range as fields that follow the graph and that the user can fill in; an end that the axis cannot show is taken back, with a word about it.
class RangeFields final : public QWidget {
    Q_OBJECT

public:
    enum class Axis : unsigned char { X, Y };

    explicit RangeFields(Axis axis, QWidget* parent = nullptr);

    /// The graph is shared; null for none. Its ranges are dates where there is a `dateOrigin`, see dateOriginOf().
    void setGraph(std::shared_ptr<TOLVGraph> graph, std::optional<double> dateOrigin);
    /// Shows the range of this moment.
    void refresh();
    /// What the fields' texts ask for becomes the visible range.
    void apply();

    [[nodiscard]] QLineEdit* from() const { return m_from; }
    [[nodiscard]] QLineEdit* to() const { return m_to; }

signals:
    void rejected(const QString& failure, const QString& reason);

private:
    Axis m_axis;
    std::shared_ptr<TOLVGraph> m_graph;
    std::optional<double> m_dateOrigin;
    QBoxLayout* m_layout = nullptr;
    QLineEdit* m_from = nullptr;
    QLabel* m_between = nullptr;
    QLineEdit* m_to = nullptr;
};

} // namespace TOLVGraphing::app
