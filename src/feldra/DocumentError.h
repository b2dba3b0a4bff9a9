#pragma once

#include "addin/host/HostError.h"

namespace feldra {

// A document or machine setup file that cannot be read or written: the file,
// the place in it (a JSON path such as "tools[3].xShift", a parse position, or
// nothing when the file as a whole is at fault) and the problem. Its
// description reads "<file>: <place>: <problem>".
class DocumentError : public host::HostError {
public:
    DocumentError(const QString& operation, const QString& file, const QString& place,
                  const QString& problem);

    const QString& File() const { return file_; }
    const QString& Place() const { return place_; }
    const QString& Problem() const { return problem_; }

private:
    QString file_;
    QString place_;
    QString problem_;
};

} // namespace feldra
