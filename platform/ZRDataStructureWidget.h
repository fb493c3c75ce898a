#pragma once

#include "platform/ZRPlatformExport.h"

#include <QWidget>

class ZRDataStructureTreeView;
class ZRLineEdit;

/**
 * @brief The data structure tree with a search field above it.
 */
class ZR_PLATFORM_EXPORT ZRDataStructureWidget : public QWidget
{
  Q_OBJECT

public:
  explicit ZRDataStructureWidget(QWidget* parent = nullptr);
  ~ZRDataStructureWidget() override;

  ZRDataStructureTreeView* getDataStructureTreeView() const;
  ZRLineEdit* searchField() const;

private:
  ZRLineEdit* m_SearchField = nullptr;
  ZRDataStructureTreeView* m_TreeView = nullptr;
};
