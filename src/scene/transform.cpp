#include "scene/transform.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string>

#include <glm/gtc/matrix_transform.hpp>
#include <glm/mat4x4.hpp>

#include "platform/archive.h"

namespace
{

constexpr CTransform::Matrix identityMatrix = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

static_assert(sizeof(glm::dmat4) == sizeof(CTransform::Matrix));
static_assert(sizeof(CTransform) == sizeof(void *));

glm::dmat4 toGlm(CTransform::Matrix const & columns)
{
    return std::bit_cast<glm::dmat4>(columns);
}
// By way of the constructor, which keeps elements finite and the identity free of memory.
CTransform fromGlm(glm::dmat4 const & matrix)
{
    return CTransform(std::bit_cast<CTransform::Matrix>(matrix));
}
glm::dvec3 toGlm(CVector const & vector)
{
    return {vector.x, vector.y, vector.z};
}

// What a written transform begins with.
enum Form : unsigned char
{
    identityForm = 0,
    matrixForm = 1
};

}  // namespace

CTransform::CTransform(Matrix const & columns)
{
    Matrix numbers = columns;
    for (double & number : numbers) number = orvane::finite(number);
    if (numbers != identityMatrix) matrix = std::make_unique<Matrix const>(numbers);
}

CTransform CTransform::translation(CVector const & by)
{
    return fromGlm(glm::translate(glm::dmat4(1), toGlm(by)));
}

CTransform CTransform::rotation(CVector const & axis, double radians)
{
    // Of moderate length first, so that its square neither overflows nor vanishes.
    double const longest = std::max({std::abs(axis.x), std::abs(axis.y), std::abs(axis.z)});
    glm::dvec3 const direction = toGlm(axis) / longest;
    if (!std::isfinite(radians) || !std::isfinite(glm::dot(direction, direction))) return {};
    return fromGlm(glm::rotate(glm::dmat4(1), radians, direction));
}

CTransform CTransform::scaling(CVector const & factors)
{
    return fromGlm(glm::scale(glm::dmat4(1), toGlm(factors)));
}

CTransform::Matrix const & CTransform::getMatrix() const
{
    return matrix ? *matrix : identityMatrix;
}

double CTransform::getElement(int row, int column) const
{
    if (row < 0 || row > 3 || column < 0 || column > 3) return 0;
    return getMatrix()[static_cast<std::size_t>(column * 4 + row)];
}

CTransform CTransform::operator*(CTransform const & other) const
{
    if (isIdentity()) return other;
    if (other.isIdentity()) return *this;
    return fromGlm(toGlm(*matrix) * toGlm(*other.matrix));
}

CPoint3D CTransform::operator*(CPoint3D const & point) const
{
    if (isIdentity()) return point;
    glm::dvec4 const moved = toGlm(*matrix) * glm::dvec4(point.x, point.y, point.z, 1);
    return orvane::finite(CPoint3D{moved.x, moved.y, moved.z});
}

bool CTransform::isMirroring() const
{
    return matrix && glm::determinant(glm::dmat3(toGlm(*matrix))) < 0;
}

CString CTransform::toText() const
{
    std::string text;
    for (int place = 0; place < 16; ++place)
    {
        char digits[32];
        char * const end = std::to_chars(digits, digits + sizeof digits, getElement(place / 4, place % 4)).ptr;
        if (place > 0) text += ' ';
        text.append(digits, end);
    }
    return CString(text);
}

void CTransform::matrixToString(char ** text) const
{
    if (!text) return;
    CString const made = toText();
    std::size_t const size = made.view().size() + 1;
    *text = new char[size];
    std::memcpy(*text, static_cast<char const *>(made), size);
}

void CTransform::write(orvane::IByteSink & sink) const
{
    orvane::writeNumber<unsigned char>(sink, isIdentity() ? identityForm : matrixForm);
    if (matrix)
        for (double const number : *matrix) orvane::writeNumber(sink, number);
}

bool CTransform::read(orvane::IByteSource & source)
{
    setToIdentity();
    unsigned char form = identityForm;
    if (!orvane::readNumber(source, form)) return false;
    if (form != matrixForm) return form == identityForm;
    Matrix columns;
    for (double & number : columns)
        if (!orvane::readNumber(source, number)) return false;
    *this = CTransform(columns);
    return true;
}

void CTransform::Serialize(CArchive & archive)
{
    if (archive.IsStoring()) write(archive);
    else if (!read(archive)) throw CArchiveException(CArchiveException::endOfFile);
}
