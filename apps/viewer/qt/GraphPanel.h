#pragma once

#include <apps/plotting/Options.h>

#include <QScrollArea>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLineEdit;

namespace TOLVGraphing::app {

class ColumnFields;
class GraphDocument;
class RangeFields;

/// What the graph is to look like: columns, drawing, axes, ranges, texts. A change is asked for at once. Of a drawing and an axis that do not go together, the one that was not touched follows.
class GraphPanel final : public QScrollArea {
    Q_OBJECT

public:
    explicit GraphPanel(QWidget* parent = nullptr);

    void showDocument(const GraphDocument& document);
    /// Only the visible ranges are others.
    void refreshRanges();

    // Parts.

    [[nodiscard]] QComboBox* drawing() const { return m_drawing; }
    [[nodiscard]] QComboBox* xAxis() const { return m_xAxis; }
    [[nodiscard]] QComboBox* yAxis() const { return m_yAxis; }
    [[nodiscard]] QComboBox* xFormat() const { return m_xFormat; }
    [[nodiscard]] QComboBox* yFormat() const { return m_yFormat; }
    [[nodiscard]] QLineEdit* title() const { return m_title; }
    [[nodiscard]] QLineEdit* xLabel() const { return m_xLabel; }
    [[nodiscard]] QLineEdit* yLabel() const { return m_yLabel; }
    [[nodiscard]] QCheckBox* legend() const { return m_legend; }
    [[nodiscard]] ColumnFields* columns() const { return m_columns; }
    [[nodiscard]] RangeFields* xRange() const { return m_xRange; }
    [[nodiscard]] RangeFields* yRange() const { return m_yRange; }

signals:
    void optionsWanted(const TOLVGraphing::app::Options& options);
    void rejected(const QString& failure, const QString& reason);

private:
    static QFormLayout* addGroup(const QString& title, QWidget* content);
    void createAxes(QFormLayout* form);
    void createTexts(QFormLayout* form);
    void createRanges(QFormLayout* form);
    void chooseDrawing();
    void chooseXAxis();
    void ask();

    bool m_isShowing = false;
    Options m_options;
    ColumnFields* m_columns = nullptr;
    QComboBox* m_drawing = nullptr;
    QComboBox* m_xAxis = nullptr;
    QComboBox* m_yAxis = nullptr;
    QComboBox* m_xFormat = nullptr;
    QComboBox* m_yFormat = nullptr;
    RangeFields* m_xRange = nullptr;
    RangeFields* m_yRange = nullptr;
    QLineEdit* m_title = nullptr;
    QLineEdit* m_xLabel = nullptr;
    QLineEdit* m_yLabel = nullptr;
    QCheckBox* m_legend = nullptr;
};

} // namespace TOLVGraphing::app
