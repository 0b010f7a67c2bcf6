#include "code/SymbolTable.h"

QVector<SymbolEntry> SymbolTable;
std::int16_t SymbolCount = 0;
