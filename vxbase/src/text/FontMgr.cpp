#include <vxbase/Font.h>

#include "text/FontEngine.h"

CCA_FontMgr::CCA_FontMgr() : m_pEngine(vxbase_detail::NewFontEngine()) {}

CCA_FontMgr::~CCA_FontMgr() { vxbase_detail::DeleteFontEngine(m_pEngine); }

CCA_FontMgr* CCA_FontMgr::GetDefault() {
  static CCA_FontMgr processDefault;
  return &processDefault;
}
