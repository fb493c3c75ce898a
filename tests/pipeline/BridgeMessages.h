#pragma once

#include "pipeline/VXBridgeObject.h"

#include <QObject>
#include <QStringList>

// Collects what a bridge tells the user: output lines, and pop-ups as "title: text".
struct BridgeMessages
{
  explicit BridgeMessages(VXBridgeObject* bridge)
  {
    QObject::connect(bridge, &VXBridgeObject::sendOutputMessage,
                     [this](const QString& text) { m_Output << text; });
    QObject::connect(bridge, &VXBridgeObject::sendPopupMessage,
                     [this](const QString& title, const QString& text) { m_Popups << title + ": " + text; });
  }
  QStringList m_Output;
  QStringList m_Popups;
};
