#pragma once

#include <TOLVGraphing/platform/geometry/Point.h>

#include <QDialog>
#include <QString>

class QComboBox;
class QDoubleSpinBox;
class QLabel;

namespace TOLVGraphing::app {

/// What a picture is exported as: its kind and its size, and of images the pixels per point. What is accepted is offered again the next time.
class ExportDialog final : public QDialog {
    Q_OBJECT

public:
    explicit ExportDialog(QWidget* parent = nullptr);

    /// In points.
    [[nodiscard]] Size size() const;
    /// Pixels per point.
    [[nodiscard]] double scale() const;
    /// ".pdf" and the like.
    [[nodiscard]] QString suffix() const;
    /// For a file dialog.
    [[nodiscard]] QString filter() const;

    void accept() override;

private:
    void update();

    QComboBox* m_kind = nullptr;
    QDoubleSpinBox* m_width = nullptr;
    QDoubleSpinBox* m_height = nullptr;
    QDoubleSpinBox* m_scale = nullptr;
    QLabel* m_result = nullptr;
};

} // namespace TOLVGraphing::app
