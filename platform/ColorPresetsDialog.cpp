#include "platform/ColorPresetsDialog.h"

#include "ui_ColorPresetsDialog.h"

#include "platform/ColorPresetsFile.h"
#include "platform/ColorPresetsTableModel.h"

#include <QFileDialog>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMessageBox>
#include <QSortFilterProxyModel>

ColorPresetsDialog::ColorPresetsDialog(QWidget* parent)
    : QDialog(parent)
    , m_Ui(std::make_unique<Ui::ColorPresetsDialog>())
    , m_Model(new ColorPresetsTableModel(this))
    , m_FilterModel(new QSortFilterProxyModel(this))
{
  qRegisterMetaType<zr::core::ColorTableUtilities::ColorPreset>();
  m_Ui->setupUi(this);
  m_Model->setPresets(ColorPresetsFile::BuiltInPresets());
  m_FilterModel->setSourceModel(m_Model);
  m_FilterModel->setFilterKeyColumn(ColorPresetsTableModel::NameColumn);
  m_FilterModel->setFilterCaseSensitivity(Qt::CaseInsensitive);

  QTableView* table = m_Ui->m_PresetsTable;
  table->setModel(m_FilterModel);
  table->setIconSize(ColorPresetsTableModel::k_ColorBarSize);
  table->horizontalHeader()->setSectionResizeMode(ColorPresetsTableModel::ColorBarColumn,
                                                  QHeaderView::ResizeToContents);
  table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);

  connect(m_Ui->m_SearchEdit, &QLineEdit::textChanged, this,
          [this](const QString& text)
          {
            m_FilterModel->setFilterFixedString(text);
            updateButtons();
          });
  connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &ColorPresetsDialog::updateButtons);
  connect(table, &QTableView::doubleClicked, this, &ColorPresetsDialog::applySelectedPreset);
  connect(m_Ui->m_ApplyButton, &QPushButton::clicked, this, &ColorPresetsDialog::applySelectedPreset);
  connect(m_Ui->m_RestoreDefaultButton, &QPushButton::clicked, this,
          &ColorPresetsDialog::restoreDefaultPreset);
  connect(m_Ui->m_ImportButton, &QPushButton::clicked, this, &ColorPresetsDialog::importPresets);
  connect(m_Ui->m_CloseButton, &QPushButton::clicked, this, &QDialog::close);
  connect(m_Ui->m_NanColorButton, &ZRColorButton::colorChanged, this, &ColorPresetsDialog::nanColorChanged);
  updateButtons();
}

ColorPresetsDialog::~ColorPresetsDialog() = default;

void ColorPresetsDialog::setNanColor(const QColor& color, bool announce)
{
  m_Ui->m_NanColorButton->setColor(color);
  if (announce)
  {
    Q_EMIT nanColorChanged(color);
  }
}

QColor ColorPresetsDialog::nanColor() const
{
  return m_Ui->m_NanColorButton->getColor();
}

ColorPresetsTableModel* ColorPresetsDialog::presetsModel() const
{
  return m_Model;
}

bool ColorPresetsDialog::selectPreset(const QString& name)
{
  const int sourceRow = m_Model->rowOfName(name);
  const QModelIndex index = m_FilterModel->mapFromSource(m_Model->index(sourceRow, 0));
  if (!index.isValid())
  {
    m_Ui->m_PresetsTable->clearSelection();
    return false;
  }
  m_Ui->m_PresetsTable->selectRow(index.row());
  m_Ui->m_PresetsTable->scrollTo(index);
  return true;
}

int ColorPresetsDialog::selectedSourceRow() const
{
  const QModelIndexList rows = m_Ui->m_PresetsTable->selectionModel()->selectedRows();
  if (rows.isEmpty())
  {
    return -1;
  }
  return m_FilterModel->mapToSource(rows.front()).row();
}

QString ColorPresetsDialog::selectedPresetName() const
{
  const int row = selectedSourceRow();
  return row < 0 ? QString() : QString::fromStdString(m_Model->preset(row).m_Name);
}

void ColorPresetsDialog::applySelectedPreset()
{
  const int row = selectedSourceRow();
  if (row < 0)
  {
    return;
  }
  Q_EMIT applyPreset(m_Model->preset(row), m_Model->colorBar(row));
}

void ColorPresetsDialog::updateButtons()
{
  m_Ui->m_ApplyButton->setEnabled(selectedSourceRow() >= 0);
}

int ColorPresetsDialog::importPresetFile(const QString& filePath)
{
  const ColorPresetsFile::Result result = ColorPresetsFile::ReadFile(filePath);
  m_Model->addPresets(result.presets);
  QStringList lines = result.messages;
  if (result.readable && result.presets.empty() && !result.messages.isEmpty())
  {
    lines.prepend(QStringLiteral("No color preset was imported."));
  }
  else if (!result.presets.empty() && !result.messages.isEmpty())
  {
    lines.prepend(
        QStringLiteral("Imported %1 color preset(s); the others were left out:").arg(result.presets.size()));
  }
  if (!lines.isEmpty())
  {
    showImportMessages(lines.join(QLatin1Char('\n')));
  }
  if (!result.presets.empty())
  {
    // Show what came in: the filter might hide it.
    m_Ui->m_SearchEdit->clear();
    selectPreset(QString::fromStdString(result.presets.front().m_Name));
  }
  return static_cast<int>(result.presets.size());
}

void ColorPresetsDialog::importPresets()
{
  const QString filePath =
      QFileDialog::getOpenFileName(this, QStringLiteral("Import Color Presets"), QString(),
                                   QStringLiteral("Color Presets (*.json);;All Files (*)"));
  if (!filePath.isEmpty())
  {
    importPresetFile(filePath);
  }
}

void ColorPresetsDialog::showImportMessages(const QString& text)
{
  // Not exec(): the box must not block whoever drives the dialog.
  if (m_MessageBox.isNull())
  {
    m_MessageBox = new QMessageBox(QMessageBox::Warning, QStringLiteral("Import Color Presets"), QString(),
                                   QMessageBox::Ok, this);
    m_MessageBox->setObjectName(QStringLiteral("m_ImportMessageBox"));
  }
  m_MessageBox->setText(text);
  m_MessageBox->open();
}
