#pragma once

class QAbstractButton;

/**
 * @brief Clears the hover look of a button that lost the pointer without a leave event: a button whose
 * menu took the pointer away, or one that moved from under it when its view was split.
 */
class VXButtonHoverReset
{
public:
  /** Once the event loop turns, the button looks hovered only if the pointer is really over it. */
  static void resetSoon(QAbstractButton* button);
  /** The same at once. */
  static void reset(QAbstractButton* button);
};
