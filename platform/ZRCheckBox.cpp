#include "platform/ZRCheckBox.h"

ZRCheckBox::~ZRCheckBox() = default;
