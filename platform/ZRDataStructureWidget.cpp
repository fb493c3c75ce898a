#include "platform/ZRDataStructureWidget.h"

#include "platform/ZRDataStructureTreeView.h"
#include "platform/ZRLineEdit.h"

#include <QVBoxLayout>

ZRDataStructureWidget::ZRDataStructureWidget(QWidget* parent)
    : QWidget(parent)
    , m_SearchField(new ZRLineEdit(this))
    , m_TreeView(new ZRDataStructureTreeView(this))
{
  m_SearchField->setObjectName(QStringLiteral("dataStructureSearchField"));
  m_SearchField->setPlaceholderText(QStringLiteral("Search"));
  m_SearchField->setClearButtonEnabled(true);
  m_TreeView->setObjectName(QStringLiteral("dataStructureTreeView"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(m_SearchField);
  layout->addWidget(m_TreeView);
  connect(m_SearchField, &QLineEdit::textChanged, m_TreeView, &ZRDataStructureTreeView::setFilterText);
}

ZRDataStructureWidget::~ZRDataStructureWidget() = default;

ZRDataStructureTreeView* ZRDataStructureWidget::getDataStructureTreeView() const
{
  return m_TreeView;
}

ZRLineEdit* ZRDataStructureWidget::searchField() const
{
  return m_SearchField;
}
