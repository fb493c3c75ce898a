#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QList>
#include <QString>

/**
 * The rows of the custom categorical colour editor: a colour, the value it stands for and the label
 * shown for that value.
 */
class VXLookupTableModel : public QAbstractTableModel
{
  Q_OBJECT

public:
  struct LUTEntry
  {
    QColor color;
    QString value;
    QString annotation;
  };

  enum Column
  {
    ColorColumn = 0,
    ValueColumn = 1,
    AnnotationColumn = 2,
    ColumnCount = 3
  };

  explicit VXLookupTableModel(QObject* parent = nullptr);

  void setTable(const QList<LUTEntry>& entries);
  QList<LUTEntry> table() const { return m_Entries; }
  void clearTable();
  void addRow(const QColor& color, const QString& value, const QString& annotation);
  void removeRow(const QModelIndex& index);

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

public Q_SLOTS:
  void colorButtonClicked(const QModelIndex& index);

Q_SIGNALS:
  void valueChanged(QModelIndex index);

protected:
  /** @brief Asks the user for a colour; an invalid colour means cancelled. */
  virtual QColor chooseColor(const QColor& initial);

private:
  bool isValidRow(const QModelIndex& index) const;

  QList<LUTEntry> m_Entries;
};
