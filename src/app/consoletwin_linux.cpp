#include "app/consoletwin.h"

std::optional<int> ConsoleTwin::handWindowOver()
{
    return std::nullopt;
}
