#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "examples/developer/panel/PanelRows.h"

#include <gtk/gtk.h>

#include <string>
#include <vector>

namespace zelvora::developer {

/// A list that scrolls. A click on a row opens what it has to say in detail, or closes it. Main thread.
class RowList final {
public:
    /// What an empty list says.
    explicit RowList(std::string const& empty);
    RowList(RowList const&) = delete;
    RowList& operator=(RowList const&) = delete;
    ~RowList() = default;

    [[nodiscard]] GtkWidget* widget() const { return m_scroller.get(); }

    /// Shows these rows. Those that were shown before keep their place and stay open.
    void show(std::vector<PanelRow> const& rows);

private:
    struct Row {
        GtkWidget* widget = nullptr;
        GtkWidget* title = nullptr;
        GtkWidget* mark = nullptr;
        GtkWidget* note = nullptr;
        GtkWidget* warning = nullptr;
        GtkWidget* details = nullptr;
        PanelRow shown;
    };

    [[nodiscard]] static Row makeRow();
    static void fill(Row& row, PanelRow const& content);
    /// How many of the rows are new at the beginning, before those that are shown.
    [[nodiscard]] std::size_t newAtTop(std::vector<PanelRow> const& rows) const;

    gtk::GObjectPointer<GtkWidget> m_scroller;
    // Owned by the scroller, which this owns too.
    GtkWidget* m_list;
    std::vector<Row> m_rows;
};

}
