#pragma once

#include <QDialog>

class QCheckBox;
class QSpinBox;

namespace TOLVGraphing::app {

/// Whether copied pictures have the size of the window or a fixed one, kept in the user's settings, where copying looks for it.
class CopySettingsDialog final : public QDialog {
    Q_OBJECT

public:
    /// What a fixed size starts with, in points.
    static constexpr int kUsualWidth = 612;
    static constexpr int kUsualHeight = 396;

    explicit CopySettingsDialog(QWidget* parent = nullptr);

    void accept() override;

    [[nodiscard]] QCheckBox* isFixed() const { return m_isFixed; }
    [[nodiscard]] QSpinBox* width() const { return m_width; }
    [[nodiscard]] QSpinBox* height() const { return m_height; }

private:
    QCheckBox* m_isFixed = nullptr;
    QSpinBox* m_width = nullptr;
    QSpinBox* m_height = nullptr;
};

} // namespace TOLVGraphing::app
