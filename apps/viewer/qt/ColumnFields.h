#pragma once

#include <apps/plotting/Options.h>

#include <QObject>

#include <optional>
#include <string>
#include <vector>

class QComboBox;
class QFormLayout;
class QLineEdit;
class QMenu;
class QSpinBox;

namespace TOLVGraphing::app {

class GraphDocument;

/// The choice of a document's columns: x and the categories' texts from a list or by name or number, y from a menu or as a list of names; and how many channels stand side by side in its files of raw numbers, where it has some.
class ColumnFields final : public QObject {
    Q_OBJECT

public:
    /// Adds its rows to a form, which owns the widgets.
    explicit ColumnFields(QFormLayout* form, QObject* parent = nullptr);

    /// Offers the columns of all its sources.
    void showDocument(const GraphDocument& document);
    /// Puts what the fields say into options.
    void putInto(Options& options) const;

    [[nodiscard]] QComboBox* x() const { return m_x; }
    [[nodiscard]] QLineEdit* y() const { return m_y; }
    [[nodiscard]] QComboBox* categories() const { return m_categories; }
    [[nodiscard]] QSpinBox* channels() const { return m_channels; }

signals:
    void changed();

private:
    void learnColumns(const GraphDocument& document);
    void showIn(QComboBox* box, const std::optional<std::string>& column) const;
    [[nodiscard]] static std::optional<std::string> columnIn(const QComboBox* box);
    void fillMenu();

    QFormLayout* m_form = nullptr;
    QComboBox* m_x = nullptr;
    QLineEdit* m_y = nullptr;
    QMenu* m_menu = nullptr;
    QComboBox* m_categories = nullptr;
    QSpinBox* m_channels = nullptr;
    /// As options call them, in the order of the files.
    std::vector<std::string> m_columns;
    std::vector<std::string> m_shownOrdinates;
};

} // namespace TOLVGraphing::app
