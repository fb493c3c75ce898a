#pragma once

#include <QAbstractTableModel>
#include <QPointer>

#include <vector>

class VXRepresentationPimpl;

/**
 * Data views in a table for the linking dialog: a check box to link each one, and its path.
 */
class ZRDataViewListModel : public QAbstractTableModel
{
  Q_OBJECT

public:
  enum Column
  {
    LinkedColumn = 0,
    PathColumn = 1
  };

  explicit ZRDataViewListModel(QObject* parent = nullptr);
  ZRDataViewListModel(const std::vector<VXRepresentationPimpl*>& dataViews, QObject* parent = nullptr);
  ~ZRDataViewListModel() override;

  void initialize(const std::vector<VXRepresentationPimpl*>& dataViews);
  VXRepresentationPimpl* at(int row) const;
  // The data views whose box is checked, in row order.
  std::vector<VXRepresentationPimpl*> getLinkedDataViews() const;

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
  struct Row
  {
    QPointer<VXRepresentationPimpl> m_DataView;
    bool m_Linked = false;
  };
  std::vector<Row> m_Rows;
};
