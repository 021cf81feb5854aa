#include "Uip_ParseError.h"

#include <utility>

Uip_ParseError::Uip_ParseError(QString message, long line, long position)
    : mMessage(std::move(message)), mLine(line), mPosition(position), mIsError(true)
{
}
