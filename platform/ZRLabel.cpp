#include "platform/ZRLabel.h"

ZRLabel::~ZRLabel() = default;
