#pragma once

#include <apps/plotting/Options.h>

#include <QWidget>

#include <cstddef>
#include <memory>
#include <vector>

class QColor;
class QComboBox;
class QDoubleSpinBox;
class QPushButton;
class QTreeWidget;

namespace TOLVGraphing {
class TOLVGraph;
}

namespace TOLVGraphing::app {

class GraphDocument;

/// The legend: every series with its line and name, and the choice of colour, pattern and thickness for those that are selected.
class SeriesPanel final : public QWidget {
    Q_OBJECT

public:
    explicit SeriesPanel(QWidget* parent = nullptr);

    void showDocument(const GraphDocument& document);

    /// For the selected series.
    void setColor(const QColor& color);
    void setPattern(LinePattern pattern);
    void setThickness(double thickness);

    [[nodiscard]] QTreeWidget* list() const { return m_list; }

signals:
    void optionsWanted(const TOLVGraphing::app::Options& options);

private:
    void chooseColor();
    void showSelected();
    [[nodiscard]] std::vector<std::size_t> selected() const;

    bool m_isShowing = false;
    /// With colour, pattern and thickness of every series.
    Options m_options;
    std::shared_ptr<TOLVGraph> m_graph;
    QTreeWidget* m_list = nullptr;
    QPushButton* m_color = nullptr;
    QComboBox* m_pattern = nullptr;
    QDoubleSpinBox* m_thickness = nullptr;
};

} // namespace TOLVGraphing::app
