#include "tavixskin/framework/object.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tavixskin/framework/gdi.h"

namespace {

class Shape : public CObject {
    DECLARE_DYNAMIC(Shape)
};
class Circle : public Shape {
    DECLARE_DYNAMIC(Circle)
    int radius = 0;
};
class Square : public Shape {
    DECLARE_DYNAMIC(Square)
};
// Has no run-time class of its own and answers with its base's.
class PlainCircle : public Circle {};

IMPLEMENT_DYNAMIC(Shape, CObject)
IMPLEMENT_DYNAMIC(Circle, Shape)
IMPLEMENT_DYNAMIC(Square, Shape)

TEST(RuntimeClass, TellsNameSizeSchemaAndBase) {
    const CRuntimeClass* circle = RUNTIME_CLASS(Circle);
    EXPECT_STREQ(circle->m_lpszClassName, "Circle");
    EXPECT_EQ(circle->m_nObjectSize, static_cast<int>(sizeof(Circle)));
    EXPECT_EQ(circle->m_wSchema, 0xFFFFu);
    EXPECT_EQ(circle->m_pBaseClass, RUNTIME_CLASS(Shape));
    EXPECT_EQ(RUNTIME_CLASS(Shape)->m_pBaseClass, RUNTIME_CLASS(CObject));
    EXPECT_EQ(RUNTIME_CLASS(CObject)->m_pBaseClass, nullptr);
    EXPECT_STREQ(RUNTIME_CLASS(CObject)->m_lpszClassName, "CObject");
}

TEST(RuntimeClass, IsDerivedFromItselfAndItsBasesOnly) {
    EXPECT_TRUE(RUNTIME_CLASS(Circle)->IsDerivedFrom(RUNTIME_CLASS(Circle)));
    EXPECT_TRUE(RUNTIME_CLASS(Circle)->IsDerivedFrom(RUNTIME_CLASS(Shape)));
    EXPECT_TRUE(RUNTIME_CLASS(Circle)->IsDerivedFrom(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(RUNTIME_CLASS(Circle)->IsDerivedFrom(RUNTIME_CLASS(Square)));
    EXPECT_FALSE(RUNTIME_CLASS(Shape)->IsDerivedFrom(RUNTIME_CLASS(Circle)));
    EXPECT_FALSE(RUNTIME_CLASS(CObject)->IsDerivedFrom(nullptr));
}

TEST(RuntimeClass, IsFoundThroughABaseReference) {
    Circle circle;
    const CObject& object = circle;
    EXPECT_EQ(object.GetRuntimeClass(), RUNTIME_CLASS(Circle));
    EXPECT_TRUE(object.IsKindOf(RUNTIME_CLASS(Shape)));
    EXPECT_FALSE(object.IsKindOf(RUNTIME_CLASS(Square)));
    EXPECT_TRUE(Square().IsKindOf(RUNTIME_CLASS(Shape)));
}

TEST(RuntimeClass, OfAClassWithoutOneIsItsBases) {
    PlainCircle plain;
    EXPECT_EQ(plain.GetRuntimeClass(), RUNTIME_CLASS(Circle));
}

TEST(RuntimeClass, OfTheGdiWrappersFormsOneFamily) {
    CBitmap bitmap;
    EXPECT_STREQ(bitmap.GetRuntimeClass()->m_lpszClassName, "CBitmap");
    EXPECT_TRUE(bitmap.IsKindOf(RUNTIME_CLASS(CGdiObject)));
    EXPECT_FALSE(bitmap.IsKindOf(RUNTIME_CLASS(CBrush)));
}

TEST(Object, IsDeletedThroughItsRoot) {
    static int deleted;
    deleted = 0;
    class Counted : public CObject {
    public:
        ~Counted() override { ++deleted; }
    };
    CObject* object = new Counted;
    delete object;
    EXPECT_EQ(deleted, 1);
}

}  // namespace
