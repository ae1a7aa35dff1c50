// CString against std::string.
#ifndef STRINGS_H
#define STRINGS_H

#include "engine.h"

class CStrings
{
public:
    static constexpr char s_szName[] = "strings";
    static constexpr int s_iStates   = 1;

    void Prepare(int, CChoices&) {}
    void Check() { Same("length", static_cast<int>(m_strModel.size()), m_str.GetLength()); }

    void DoSet(CChoices& choices, CFault& fault)
    {
        const string strText   = choices.Text(20);
        const string strThrown = fault.Run([&] { m_str.Set(strText.c_str()); });
        m_strModel             = strThrown.empty() ? strText : "";
    }

    static const SOperation<CStrings> s_aOperations[1];

private:
    CString m_str;
    string m_strModel;
};

inline const SOperation<CStrings> CStrings::s_aOperations[] = {{"Set", &CStrings::DoSet}};

#endif
