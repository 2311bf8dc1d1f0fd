#pragma once

#include "gui/widgets/binder.h"
#include "panels/zt72517/pspi_page.h"

#include <vector>

#include <QWidget>

class QGridLayout;

namespace bitlux::gui {

/// What the page of the ZT72517 shows: the state diagram, the lines by hand, the configuration, a
/// free byte, and the flags with their refresh.
class PspiView : public QWidget {
public:
    /// `before` is the control that the tabulator key reaches before it.
    PspiView(zt72517::PspiPage& page, const Session& session, QWidget& before, Binder& binder,
             QWidget* parent);

    /// That which the tabulator key reaches last.
    [[nodiscard]] QWidget& last() const { return *order_.back(); }

private:
    template <typename Widget, typename Control>
    Widget* add(Control& control, QWidget* parent);
    QWidget* makeStates();
    QWidget* makeLines();
    QWidget* makeConfiguration();
    QWidget* makeByte();
    QWidget* makeFlags();
    void addFlagLine(int number, zt72517::FlagLine& line, QGridLayout& grid, QWidget* parent);
    QLayout* makeRefresh(QWidget* parent);
    /// Options side by side within their frame.
    QWidget* makeOptions(forms::Frame& frame, const forms::ControlArray<forms::OptionButton>& all,
                         QWidget* parent);

    zt72517::PspiPage& page_;
    Binder& binder_;
    std::vector<QWidget*> order_; ///< of the tabulator key
    Subscription flushed_;
};

} // namespace bitlux::gui
