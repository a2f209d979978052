#include "support/autoExtension.h"

namespace {

/// SQLite declares the entry point without its parameters and calls it with them.
void (*entryPoint(OnOpen onOpen))()
{
    return reinterpret_cast<void (*)()>(onOpen);
}

}  // namespace

void addAutoExtension(OnOpen onOpen)
{
    sqlite3_auto_extension(entryPoint(onOpen));
}

void removeAutoExtension(OnOpen onOpen)
{
    sqlite3_cancel_auto_extension(entryPoint(onOpen));
}
