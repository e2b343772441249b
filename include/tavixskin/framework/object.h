/* The root of all classes, with run-time class information. */
#pragma once

#include <windows.h>

#include <cstddef>

#include "tavixskin/export.h"

class CArchive;
class CDumpContext;
class CObject;

/* What a class knows of itself at run time. One constant object a class, never freed. */
struct TAVIX_API CRuntimeClass {
    const char* m_lpszClassName;
    int m_nObjectSize;                  // bytes
    UINT m_wSchema;                     // 0xFFFF: not serialisable
    const CRuntimeClass* m_pBaseClass;  // null for CObject

    /* True for the class itself and for all classes below it. */
    bool IsDerivedFrom(const CRuntimeClass* base) const;
};

class TAVIX_API CObject {
public:
    static const CRuntimeClass classCObject;

    virtual const CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject() = default;
    // Archives and diagnostics are not used; the slots keep the family's shape.
    virtual void Serialize(CArchive& archive);
    virtual void AssertValid() const;
    virtual void Dump(CDumpContext& context) const;

    bool IsKindOf(const CRuntimeClass* base) const { return GetRuntimeClass()->IsDerivedFrom(base); }

    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

protected:
    CObject() = default;
};

#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)

#define DECLARE_DYNAMIC(class_name)               \
public:                                           \
    static const CRuntimeClass class##class_name; \
    const CRuntimeClass* GetRuntimeClass() const override;

#define IMPLEMENT_DYNAMIC(class_name, base_class_name)                                                      \
    const CRuntimeClass class_name::class##class_name = {#class_name, static_cast<int>(sizeof(class_name)), \
                                                         0xFFFF, RUNTIME_CLASS(base_class_name)};           \
    const CRuntimeClass* class_name::GetRuntimeClass() const { return RUNTIME_CLASS(class_name); }
