#include "engine/source/SourceRecords.h"

QString AsmFile;
QString LstFile;
QString ErrFile;
QString S19File;
QString ErrorSourcePath;
QString ErrorSourceTitle;
