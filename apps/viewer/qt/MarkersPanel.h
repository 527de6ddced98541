#pragma once

#include <QString>
#include <QWidget>

#include <vector>

class QPushButton;
class QTableWidget;

namespace TOLVGraphing {
class GraphWidget;
}

namespace TOLVGraphing::app {

class GraphDocument;

/// The markers of a graph as a table: their values, which can be written over, and the nearest sample of every series. Its selection is that of the graph's widget.
class MarkersPanel final : public QWidget {
    Q_OBJECT

public:
    /// Follows the widget, which is the host's and lives longer.
    explicit MarkersPanel(GraphWidget* graphWidget, QWidget* parent = nullptr);

    void showDocument(const GraphDocument& document);
    /// Shows the markers of this moment; while one is dragged, only its value changes.
    void refresh();
    /// Makes this marker's place the middle of the visible range.
    void goTo(int row);

    [[nodiscard]] QTableWidget* table() const { return m_table; }

signals:
    void rejected(const QString& failure, const QString& reason);

private:
    void fill();
    void fitColumns();
    void fillRow(int row, double value);
    void changeValue(int row, int column);
    void selectInWidget();
    void selectInTable();
    void updateButtons();

    GraphWidget* m_graphWidget = nullptr;
    std::optional<double> m_dateOrigin;
    bool m_isFilling = false;
    std::vector<double> m_values;
    QTableWidget* m_table = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_delete = nullptr;
    QPushButton* m_goTo = nullptr;
};

} // namespace TOLVGraphing::app
