#include "source/SourceRecords.h"

QString LstFile;
QString S19File;
QString AsmFile;
