#include "source/SourceRecords.h"

QString LstFile;
