#include "toolkit/HelpResults.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {

constexpr int pageRole = Qt::UserRole;

/// Draws the first line of an entry bold and wraps the rest.
class TitleAndContext final : public QStyledItemDelegate {
 public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem entry = option;
        initStyleOption(&entry, index);
        entry.text.clear();
        entry.widget->style()->drawControl(QStyle::CE_ItemViewItem, &entry, painter, entry.widget);
        QTextDocument text;
        fill(text, entry, index, entry.rect.width());
        const bool selected = entry.state.testFlag(QStyle::State_Selected);
        QAbstractTextDocumentLayout::PaintContext context;
        context.palette.setColor(QPalette::Text,
                                 entry.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
        painter->save();
        painter->translate(entry.rect.topLeft());
        text.documentLayout()->draw(painter, context);
        painter->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QTextDocument text;
        const auto* list = qobject_cast<const QListWidget*>(option.widget);
        fill(text, option, index, list == nullptr ? option.rect.width() : list->viewport()->width());
        return text.size().toSize();
    }

 private:
    static void fill(QTextDocument& text, const QStyleOptionViewItem& entry, const QModelIndex& index,
                     int width) {
        const QString words = index.data().toString();
        const qsizetype titleEnd = words.indexOf(u'\n');
        text.setDefaultFont(entry.font);
        text.setTextWidth(width);
        text.setHtml(u"<b>"_s + words.left(titleEnd).toHtmlEscaped() + u"</b><br>"_s +
                     words.mid(titleEnd + 1).toHtmlEscaped());
    }
};

}  // namespace

HelpResults::HelpResults(QWidget* parent) : QListWidget(parent) {
    setAccessibleName(u"Nalezené stránky"_s);
    setItemDelegate(new TitleAndContext(this));
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // entries are as wide as the view
}

void HelpResults::setHits(const std::vector<HelpSearch::Hit>& hits) {
    clear();
    for (const HelpSearch::Hit& hit : hits) {
        auto* entry = new QListWidgetItem(hit.title + u'\n' + hit.context, this);
        entry->setData(pageRole, hit.page);
    }
    setCurrentRow(0);
}

QString HelpResults::currentPage() const {
    return currentItem() == nullptr ? QString() : currentItem()->data(pageRole).toString();
}

void HelpResults::resizeEvent(QResizeEvent* event) {
    QListWidget::resizeEvent(event);
    scheduleDelayedItemsLayout();
}
