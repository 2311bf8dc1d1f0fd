#pragma once

#include "gui/widgets/binder.h"
#include "panels/zt72517/pspi_page.h"

#include <vector>

#include <QWidget>

class QGridLayout;

namespace bitlux::gui {

/// The content of the page of the ZT72517: the state diagram, the lines set manually, the
/// configuration, a free byte, and the flags with their refresh.
class PspiView : public QWidget {
public:
    /// `before` precedes it in the tab order.
    PspiView(zt72517::PspiPage& page, const Session& session, QWidget& before, Binder& binder,
             QWidget* parent);

    /// The last widget in the tab order.
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
    /// Options beside each other within their frame.
    QWidget* makeOptions(forms::Frame& frame, const forms::ControlArray<forms::OptionButton>& all,
                         QWidget* parent);

    zt72517::PspiPage& page_;
    Binder& binder_;
    std::vector<QWidget*> order_; ///< the tab order
    Subscription flushed_;
};

} // namespace bitlux::gui
