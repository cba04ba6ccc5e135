#include "toolkit/qt/QtListView.h"

#include <algorithm>
#include <cmath>

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QScrollBar>
#include <QStyleOptionFocusRect>
#include <QToolTip>

#include "controls/Container.h"
#include "toolkit/qt/QtToolTip.h"

namespace ostrevin::qt {
namespace {

/// Keeps texts away from the edges of their cells, so that a number does not touch the date beside it.
class RoomyStyle : public QProxyStyle {
  public:
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override {
        constexpr int kCellMargin = 5;
        return metric == PM_FocusFrameHMargin || metric == PM_HeaderMargin
                   ? kCellMargin
                   : QProxyStyle::pixelMetric(metric, option, widget);
    }
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                         const QWidget* widget) const override {
        constexpr int kRowMargin = 4;
        const QSize plain = QProxyStyle::sizeFromContents(type, option, size, widget);
        return type == CT_ItemViewItem ? plain + QSize(0, kRowMargin) : plain;
    }
};

/// The headers of the columns, for the keyboard too: the arrows choose a column, the space bar clicks it.
class HeaderWidget : public QHeaderView {
  public:
    explicit HeaderWidget(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
        setFocusPolicy(Qt::TabFocus);
        setHighlightSections(false);
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        switch (event->key()) {
            case Qt::Key_Left:
                Choose(column_ - 1);
                break;
            case Qt::Key_Right:
                Choose(column_ + 1);
                break;
            case Qt::Key_Space:
            case Qt::Key_Return:
            case Qt::Key_Enter:
                emit sectionClicked(column_);
                break;
            default:
                event->ignore();
        }
    }
    void initStyleOptionForIndex(QStyleOptionHeader* option, int column) const override {
        QHeaderView::initStyleOptionForIndex(option, column);
        // An arrow that points up stands for ascending.
        switch (option->sortIndicator) {
            case QStyleOptionHeader::SortUp:
                option->sortIndicator = QStyleOptionHeader::SortDown;
                break;
            case QStyleOptionHeader::SortDown:
                option->sortIndicator = QStyleOptionHeader::SortUp;
                break;
            case QStyleOptionHeader::None:
                break;
        }
    }
    void focusInEvent(QFocusEvent* /*event*/) override { viewport()->update(); }
    void focusOutEvent(QFocusEvent* /*event*/) override { viewport()->update(); }
    void paintSection(QPainter* painter, const QRect& rect, int column) const override {
        QHeaderView::paintSection(painter, rect, column);
        if (hasFocus() && column == column_) {
            QStyleOptionFocusRect option;
            option.initFrom(this);
            option.rect = rect.adjusted(2, 2, -2, -2);
            style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, painter, this);
        }
    }

  private:
    void Choose(int column) {
        column_ = std::clamp(column, 0, count() - 1);
        viewport()->update();
    }

    int column_ = 0;
};

/// Tells what a person chose or opened.
class ListWidget : public FollowingView<QTreeView> {
  public:
    ListWidget(QtListView& view, QWidget* parent) : FollowingView(parent), view_(view) {
        setStyle(&style_);
        setCursor(Qt::ArrowCursor);  // not that of the box it stands on
        setHeader(new HeaderWidget(this));
        header()->setStyle(&style_);
        connect(header(), &QHeaderView::sectionResized, this, [this] {
            if (!fitting_) {
                firstColumnFits_ = false;
            }
        });
    }

    /// Gives the first column what the others leave, until a person sizes a column.
    void FitFirstColumn() {
        if (!firstColumnFits_ || model() == nullptr || model()->columnCount() == 0) {
            return;
        }
        const int others = header()->length() - header()->sectionSize(0);
        fitting_ = true;
        header()->resizeSection(0, std::max(viewport()->width() - others, kLeastWidth));
        fitting_ = false;
    }
    void SizeColumn(int column, int width) {
        fitting_ = true;
        header()->resizeSection(column, width);
        fitting_ = false;
    }

  protected:
    void resizeEvent(QResizeEvent* event) override {
        QTreeView::resizeEvent(event);
        FitFirstColumn();
    }
    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton) {
            Press(*event, &QtListView::RowChosen);
        }
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton) {
            Press(*event, &QtListView::RowOpened);
        } else {
            mousePressEvent(event);
        }
    }
    void mouseReleaseEvent(QMouseEvent* /*event*/) override {}
    void keyPressEvent(QKeyEvent* event) override {
        view_.BringUpToDate();
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            view_.SelectionOpened();
        } else if (event->matches(QKeySequence::Copy)) {
            view_.CopySelection();
        } else {
            QTreeView::keyPressEvent(event);
        }
    }
    /// To the side, the rows stay where a person has put them.
    void scrollTo(const QModelIndex& index, ScrollHint hint) override {
        const int place = horizontalScrollBar()->value();
        QTreeView::scrollTo(index, hint);
        horizontalScrollBar()->setValue(place);
    }
    bool viewportEvent(QEvent* event) override {
        if (event->type() == QEvent::ToolTip) {
            ShowWholeText(static_cast<QHelpEvent&>(*event));
            return true;
        }
        return QTreeView::viewportEvent(event);
    }

  private:
    static constexpr int kLeastWidth = 160;

    /// Tells the row that was pressed; beside the rows a press changes nothing.
    void Press(const QMouseEvent& event, void (QtListView::*tell)(int row)) {
        view_.BringUpToDate();
        const QModelIndex index = indexAt(event.pos());
        if (index.isValid()) {
            setAutoScroll(false);  // the row stays under the mouse
            (view_.*tell)(index.row());
            setAutoScroll(true);
        }
    }
    /// The text of a cell that is too narrow for it.
    void ShowWholeText(const QHelpEvent& event) {
        const QModelIndex index = indexAt(event.pos());
        const bool clipped = index.isValid() && sizeHintForIndex(index).width() > visualRect(index).width();
        QToolTip::showText(event.globalPos(), clipped ? ToolTipOf(index.data().toString(), *this) : QString(),
                           viewport());
    }

    QtListView& view_;
    RoomyStyle style_;
    bool firstColumnFits_ = true;
    bool fitting_ = false;
};

}  // namespace

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : list_.ColumnCount();
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    // The rows may have become fewer since they were told.
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || row >= list_.ItemCount()) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return Shown(list_.Item(row + 1).Cell(index.column() + 1));
    }
    if (role == Qt::TextAlignmentRole && list_.Column(index.column() + 1).RightAligned()) {
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    }
    return {};
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= list_.ColumnCount()) {
        return {};
    }
    const ColumnHeader& column = list_.Column(section + 1);
    if (role == Qt::DisplayRole) {
        return Text(column.Text());
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant((column.RightAligned() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    return {};
}

void ListModel::Reset() {
    beginResetModel();
    rows_ = static_cast<int>(list_.ItemCount());
    endResetModel();
}

void ListModel::TellRowChanged(std::size_t row) {
    const int number = static_cast<int>(row);
    emit dataChanged(index(number, 0), index(number, list_.ColumnCount() - 1));
}

QtListView::QtListView(QtToolkit& toolkit, ListView& list, QWidget* parent)
    : WidgetView(list), toolkit_(toolkit), model_(list), widget_(new ListWidget(*this, parent)) {
    widget_->setModel(&model_);
    selection_ =
        new FollowingSelection(*widget_, [this](const QModelIndex& index) { RowChosen(index.row()); });
    widget_->setRootIsDecorated(false);
    widget_->setItemsExpandable(false);
    widget_->setUniformRowHeights(true);
    widget_->setSelectionMode(QAbstractItemView::SingleSelection);
    widget_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    widget_->setTextElideMode(Qt::ElideMiddle);
    widget_->header()->setStretchLastSection(false);
    widget_->header()->setSectionsMovable(false);
    widget_->header()->setSectionsClickable(true);
    QObject::connect(widget_->header(), &QHeaderView::sectionClicked, widget_,
                     [this](int column) { HeaderClicked(column); });
    Container& container = *list.Parent();
    for (int column = 1; column <= list.ColumnCount(); ++column) {
        const double width =
            container.ScaleX(list.Column(column).Width(), container.ScaleMode(), ScaleMode::Pixel);
        static_cast<ListWidget*>(widget_)->SizeColumn(column - 1, static_cast<int>(std::lround(width)));
    }
    Show(*widget_);
    widget_->header()->setAccessibleName(widget_->accessibleName() + QStringLiteral(", columns"));
    SetExtendedStyle(list.ExtendedStyle());
    RowsChanged();
    SortChanged();
}

QtListView::~QtListView() {
    widget_->setModel(nullptr);
}

void QtListView::RowsChanged() {
    if (!stale_) {
        stale_ = true;
        // To the model, which goes with this view; the widget outlives it until the window is deleted.
        QMetaObject::invokeMethod(
            &model_, [this] { BringUpToDate(); }, Qt::QueuedConnection);
    }
}

void QtListView::BringUpToDate() {
    if (!stale_) {
        return;
    }
    stale_ = false;
    model_.Reset();
    ShowSelection();
    static_cast<ListWidget*>(widget_)->FitFirstColumn();
}

void QtListView::RowChanged(std::size_t row) {
    if (!stale_) {
        model_.TellRowChanged(row);
    }
}

void QtListView::SelectionChanged() {
    if (!stale_) {
        ShowSelection();
    }
}

void QtListView::ShowSelection() {
    const ListItem* item = Control().SelectedItem();
    if (item == nullptr) {
        selection_->Follow({});
        return;
    }
    const bool fullRow = (extendedStyle_ & ListView::kFullRowSelect) != 0;
    selection_->Follow(model_.index(static_cast<int>(Control().IndexOf(*item) - 1), 0),
                       fullRow ? QItemSelectionModel::Rows : QItemSelectionModel::NoUpdate);
}

void QtListView::SortChanged() {
    widget_->header()->setSortIndicatorShown(Control().Sorted());
    widget_->header()->setSortIndicator(Control().SortKey(), Control().SortOrder() == SortOrder::Ascending
                                                                 ? Qt::AscendingOrder
                                                                 : Qt::DescendingOrder);
}

void QtListView::LockUpdate(bool locked) {
    widget_->setUpdatesEnabled(!locked);
    if (locked) {
        // One look at the rows in the end serves better than word of each change on the way.
        RowsChanged();
    }
}

void QtListView::EnsureVisible(std::size_t row) {
    BringUpToDate();
    widget_->scrollTo(model_.index(static_cast<int>(row), 0));
}

void QtListView::SetExtendedStyle(std::uint32_t style) {
    extendedStyle_ = style;
    const bool fullRow = (style & ListView::kFullRowSelect) != 0;
    widget_->setSelectionBehavior(fullRow ? QAbstractItemView::SelectRows : QAbstractItemView::SelectItems);
    widget_->setAllColumnsShowFocus(fullRow);
}

ListItem* QtListView::ItemAt(int row) const {
    const auto index = static_cast<std::size_t>(row) + 1;
    return index <= Control().ItemCount() ? &Control().Item(index) : nullptr;
}

void QtListView::RowChosen(int row) {
    if (ListItem* item = ItemAt(row)) {
        toolkit_.Deliver([&] { Control().ClickItem(*item); });
    }
}

void QtListView::RowOpened(int row) {
    if (ListItem* item = ItemAt(row)) {
        toolkit_.Deliver([&] { Control().OpenItem(*item); });
    }
}

void QtListView::SelectionOpened() {
    toolkit_.Deliver([&] { Control().DblClick.Raise(); });
}

void QtListView::CopySelection() const {
    if (const ListItem* item = Control().SelectedItem()) {
        QGuiApplication::clipboard()->setText(Text(item->Text()));
    }
}

void QtListView::HeaderClicked(int column) {
    SortChanged();  // Qt has turned the mark round by itself; the order is the control's to say
    toolkit_.Deliver([&] { Control().ClickColumn(column + 1); });
}

}  // namespace ostrevin::qt
