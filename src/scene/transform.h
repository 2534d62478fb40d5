#pragma once

#include "platform/bytes.h"
#include "platform/string.h"
#include "scene/geometry.h"

#include <array>
#include <memory>

class CArchive;

// Where something stands, how it is turned and how large it is: a 4 by 4 matrix of doubles that multiplies
// column vectors from the left, as usual in graphics. So the fourth column is the translation, and of a
// product the right factor is applied first. The last row is kept but moves no point.
//
// Elements are always finite: what is not a number becomes 0, what is too large the largest double. The
// identity takes no memory beyond the object itself, one pointer.
class CTransform
{
public:
    // Column after column.
    using Matrix = std::array<double, 16>;

    // The identity.
    CTransform() = default;
    explicit CTransform(Matrix const & columns);
    CTransform(CTransform const & other)
        : matrix(other.matrix ? std::make_unique<Matrix const>(*other.matrix) : nullptr)
    {
    }
    CTransform(CTransform &&) = default;
    CTransform & operator=(CTransform other) noexcept
    {
        matrix.swap(other.matrix);
        return *this;
    }

    static CTransform translation(CVector const & by);
    // Counter-clockwise as seen from the tip of the axis; the identity for an axis without a length.
    static CTransform rotation(CVector const & axis, double radians);
    static CTransform scaling(CVector const & factors);

    bool isIdentity() const { return !matrix; }
    void setToIdentity() { matrix.reset(); }
    Matrix const & getMatrix() const;
    // Zero outside the four rows and columns.
    double getElement(int row, int column) const;

    // First `other`, then this one.
    CTransform operator*(CTransform const & other) const;
    CPoint3D operator*(CPoint3D const & point) const;
    // Whether it turns the inside of a shape out.
    bool isMirroring() const;

    // Zero and minus zero are equal.
    friend bool operator==(CTransform const & a, CTransform const & b)
    {
        return a.matrix && b.matrix ? *a.matrix == *b.matrix : a.isIdentity() && b.isIdentity();
    }

    // The 16 elements row after row, as a matrix is read on paper, with blanks between: each in the fewest
    // digits that give it back exactly, whatever the locale.
    CString toText() const;
    // The same text, in memory from new[] that the caller deletes. Nothing happens with a null pointer.
    void matrixToString(char ** text) const;

    // As written, through an archive; throws where `read` answers false.
    void Serialize(CArchive & archive);
    // One byte for the identity, 129 for anything else.
    void write(orvane::IByteSink & sink) const;
    // False where the bytes end early or were not written by `write`; the transform is the identity then.
    bool read(orvane::IByteSource & source);

private:
    // Null for the identity, and for nothing else.
    std::unique_ptr<Matrix const> matrix;
};
