// The page callback interface and the callback that fills an index array.

#include <vxutility/PageRange.h>

IDoSomething::~IDoSomething() = default;

bool IDoSomething::DoSomething(int) { return true; }

FillPageArray::FillPageArray(int nPageCount, CCA_ArrayTemplate<int>* pPages)
    : m_nPageCount(nPageCount), m_pPages(pPages) {}

bool FillPageArray::DoSomething(int page) {
  if (page < 0) {
    for (int index = 0; index < m_nPageCount; ++index) m_pPages->Add(index);
    return true;
  }
  if (page >= m_nPageCount) return false;
  m_pPages->Add(page);
  return true;
}
