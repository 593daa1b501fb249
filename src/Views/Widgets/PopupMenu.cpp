#include "Views/Widgets/PopupMenu.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

bool isModifier(int key) {
    return key == Qt::Key_Alt || key == Qt::Key_AltGr || key == Qt::Key_Meta;
}

QFont fontOf(const MenuItem& item, QFont font) {
    if (!item.styledTitle)
        return font;
    // A point of the platform that the menu was drawn for is a pixel of a screen of ordinary density.
    if (item.styledTitle->pointSize)
        font.setPixelSize(qRound(*item.styledTitle->pointSize));
    if (item.styledTitle->weight == FontWeight::semibold)
        font.setWeight(QFont::DemiBold);
    return font;
}

QKeySequence shortcutOf(const MenuItem& item) {
    return item.keyEquivalent ? QKeySequence(u"Ctrl+"_s + item.keyEquivalent->key.toUpper()) : QKeySequence();
}

/// What lies under the pointer in a window of this program that takes no activation.
QWidget* besideMenu(const QWidget& menu, QPoint place) {
    QWidget* const widget = QApplication::widgetAt(place);
    const bool isPanel = widget && widget->window() != &menu &&
                         widget->window()->testAttribute(Qt::WA_ShowWithoutActivating);
    return isPanel ? widget : nullptr;
}

void hand(QWidget& widget, const QMouseEvent& event) {
    QMouseEvent same(event.type(), widget.mapFromGlobal(event.globalPosition()), event.globalPosition(), event.button(),
                     event.buttons(), event.modifiers());
    QCoreApplication::sendEvent(&widget, &same);
}

}  // namespace

PopupMenu::PopupMenu()
    : m_style([this](const QAction* action) { return itemOf(action); }) {
    setStyle(&m_style);
    connect(this, &QMenu::aboutToShow, this, [this] {
        m_reported = nullptr;
        if (m_delegate)
            m_delegate->menuWillOpen();
    });
    connect(this, &QMenu::aboutToHide, this, [this] {
        m_reported = nullptr;
        if (m_delegate)
            m_delegate->menuDidClose();
    });
    connect(this, &QMenu::triggered, this, [this](QAction* action) { Q_EMIT chosen(action->data().toInt()); });
}

const MenuItem* PopupMenu::itemOf(const QAction* action) const {
    const auto index = static_cast<std::size_t>(action->data().toUInt());
    return m_items && action->data().isValid() && index < m_items->size() ? &(*m_items)[index] : nullptr;
}

void PopupMenu::setItems(const MenuItems& items) {
    const MenuItem* const before = hasHighlightedItem() ? itemOf(activeAction()) : nullptr;
    const auto highlighted = before && before->representedObject ? before->representedObject->id : QUuid();
    m_isReplacing = true;
    clear();
    m_items = &items;
    m_reported = nullptr;
    m_isFilled = false;
    if (isVisible())
        fill();
    m_isReplacing = false;
    if (!isVisible())
        return;
    for (QAction* const action : actions()) {
        const MenuItem* const item = itemOf(action);
        if (!highlighted.isNull() && item && item->representedObject && item->representedObject->id == highlighted) {
            m_reported = action;  // before it is told again
            setActiveAction(action);
        }
    }
    adjustSize();
    // The one that is gone has been left.
    if (before && !m_reported && m_delegate)
        m_delegate->menuWillHighlight(nullptr);
}

void PopupMenu::fill() {
    if (std::exchange(m_isFilled, true) || !m_items)
        return;
    for (std::size_t i = 0; i < m_items->size(); ++i)
        addItem((*m_items)[i], static_cast<int>(i));
}

void PopupMenu::open(QPoint place) {
    fill();
    popup(place);
}

void PopupMenu::addItem(const MenuItem& item, int index) {
    QAction* const action = item.isSeparator ? addSeparator() : new QAction(this);
    if (!item.isSeparator)
        addAction(action);
    action->setData(index);
    action->setText(QString(item.title).simplified().replace(u'&', u"&&"_s));
    action->setEnabled(item.isEnabled);
    action->setFont(fontOf(item, font()));
    action->setShortcut(shortcutOf(item));
    action->setShortcutVisibleInContextMenu(true);
}

bool PopupMenu::hasHighlightedItem() const {
    return isVisible() && activeAction() && !activeAction()->isSeparator();
}

bool PopupMenu::event(QEvent* event) {
    const bool isTaken = QMenu::event(event);
    reportHighlight();
    return isTaken;
}

/// The toolkit tells of items that are reached, not of being left; so what is highlighted is looked at after each
/// event.
void PopupMenu::reportHighlight() {
    if (!isVisible() || m_isReplacing || !m_delegate || activeAction() == m_reported)
        return;
    m_reported = activeAction();
    m_delegate->menuWillHighlight(m_reported ? itemOf(m_reported) : nullptr);
}

void PopupMenu::keyPressEvent(QKeyEvent* event) {
    // Held for previews; the toolkit would close the menu.
    if (isModifier(event->key())) {
        event->accept();
        return;
    }
    const QKeySequence pressed(event->keyCombination());
    for (QAction* const action : actions()) {
        if (!action->shortcut().isEmpty() && action->shortcut() == pressed) {
            close();
            action->trigger();
            return;
        }
    }
    // With Alt, the keys that move about mean the same as without.
    QKeyEvent plain(event->type(), event->key(), event->modifiers() & ~Qt::AltModifier, event->text());
    QMenu::keyPressEvent(&plain);
}

void PopupMenu::keyReleaseEvent(QKeyEvent* event) {
    if (isModifier(event->key()))
        event->accept();
    else
        QMenu::keyReleaseEvent(event);
}

void PopupMenu::mousePressEvent(QMouseEvent* event) {
    m_pressedBeside = besideMenu(*this, event->globalPosition().toPoint());
    if (m_pressedBeside)
        hand(*m_pressedBeside, *event);
    else
        QMenu::mousePressEvent(event);
}

void PopupMenu::mouseReleaseEvent(QMouseEvent* event) {
    const QPointer<QWidget> pressed = std::exchange(m_pressedBeside, nullptr);
    if (!pressed) {
        QMenu::mouseReleaseEvent(event);
        return;
    }
    const bool isDone = qobject_cast<QAbstractButton*>(pressed);
    hand(*pressed, *event);
    if (isDone)
        close();
}

}  // namespace wrapio
