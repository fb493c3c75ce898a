#include "platform/ZRRadioButton.h"

ZRRadioButton::~ZRRadioButton() = default;
