#pragma once

#include <string>

#include "cntr/export.h"
#include "foundation/object/exception.h"
#include "foundation/object/instantiator.h"

/// Scope of the library's enumerations and error classes. It holds no data. The enumerations may hold any int, so that
/// a value that is none of them can be refused.
class MOKCNTR_API gmContourDefs {
  public:
    /// What a region or a region set does with a self-intersecting outline that it is given.
    enum IntersectionMode : int {
        eKeep = 0,        ///< keeps it as given
        eOuterHull = 1,   ///< replaces it by its outer hull
        eRegularize = 2,  ///< replaces it by its regularised form
    };

    /// Which circle encloses a contour.
    enum DiameterMode : int {
        /// The circle on the farthest pair of vertices: its diameter is the largest distance between two vertices.
        /// It need not enclose every vertex. Linear and little more in their number, quadratic at the worst.
        eMaxVertexPair = 0,
        /// The circle around the first vertex through the one farthest from it: it encloses every vertex, and its
        /// diameter is at most twice the largest distance. Linear.
        eFromFirstVertex = 1,
    };

    /// What a display may want to tell apart.
    /// Deliberate: a contour draws the same way whatever the mode.
    enum DrawMode : int {
        eOutline = 0,      ///< an ordinary outline
        eHighlighted = 1,  ///< an outline that stands out from the others
    };

    /// Base of every error of the library: thrown by value, caught by reference to whichever class matters.
    class MOKCNTR_API Errors : public gmExceptionWithString {
      public:
        explicit Errors(const std::string& message = std::string());

        /// The number of the error's class, the same for ever.
        virtual long errorNumber() const = 0;

        /// Throws a copy of this error as the class that it is, after deleting this one. For code that holds an
        /// error of a class it does not know, on the heap and its own.
        [[noreturn]] virtual void suicideAndRethrow() = 0;

      protected:
        void dispatchSerialize(gmArchive& archive) override;
        virtual void serialize_(gmArchive& archive, unsigned char version);
    };

    /// What the error classes have in common: the number, the true class, and the place in archives.
    template <class Error, long Number>
    class MOKCNTR_API NumberedError : public Errors {
      public:
        using Errors::Errors;

        long errorNumber() const override { return Number; }
        [[noreturn]] void suicideAndRethrow() override {
            const Error copy(static_cast<const Error&>(*this));
            delete this;
            throw copy;
        }

        /// A new error without a message, for the registry.
        static gmPersistent* make() { return new Error; }
        static gm_Instantiator sExemplar;

      protected:
        void dispatchSerialize(gmArchive& archive) override;
        void serialize_(gmArchive& archive, unsigned char version) override;
    };

    /// A contour has too few vertices for the query.
    class EmptyContour;
    /// A region set holds no region. (The number before it is left unused.)
    class EmptyRegionSet;
    /// An argument or a combination of shapes is not acceptable.
    class BadParams;
    /// A region was asked to become an open contour.
    class RegionCannotBeSetOpen;
};

class MOKCNTR_API gmContourDefs::EmptyContour
    : public gmContourDefs::NumberedError<gmContourDefs::EmptyContour, 0x10004680> {
  public:
    explicit EmptyContour(const std::string& message = std::string()) : NumberedError(message) {}
};

class MOKCNTR_API gmContourDefs::EmptyRegionSet
    : public gmContourDefs::NumberedError<gmContourDefs::EmptyRegionSet, 0x10004682> {
  public:
    explicit EmptyRegionSet(const std::string& message = std::string()) : NumberedError(message) {}
};

class MOKCNTR_API gmContourDefs::BadParams : public gmContourDefs::NumberedError<gmContourDefs::BadParams, 0x10004683> {
  public:
    explicit BadParams(const std::string& message = std::string()) : NumberedError(message) {}
};

class MOKCNTR_API gmContourDefs::RegionCannotBeSetOpen
    : public gmContourDefs::NumberedError<gmContourDefs::RegionCannotBeSetOpen, 0x10004684> {
  public:
    explicit RegionCannotBeSetOpen(const std::string& message = std::string()) : NumberedError(message) {}
};

// Registered one by one in the source of the archive layouts, in their order.
template <>
gm_Instantiator gmContourDefs::NumberedError<gmContourDefs::BadParams, 0x10004683>::sExemplar;
template <>
gm_Instantiator gmContourDefs::NumberedError<gmContourDefs::EmptyContour, 0x10004680>::sExemplar;
template <>
gm_Instantiator gmContourDefs::NumberedError<gmContourDefs::EmptyRegionSet, 0x10004682>::sExemplar;
template <>
gm_Instantiator gmContourDefs::NumberedError<gmContourDefs::RegionCannotBeSetOpen, 0x10004684>::sExemplar;

extern template class gmContourDefs::NumberedError<gmContourDefs::BadParams, 0x10004683>;
extern template class gmContourDefs::NumberedError<gmContourDefs::EmptyContour, 0x10004680>;
extern template class gmContourDefs::NumberedError<gmContourDefs::EmptyRegionSet, 0x10004682>;
extern template class gmContourDefs::NumberedError<gmContourDefs::RegionCannotBeSetOpen, 0x10004684>;
