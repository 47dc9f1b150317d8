// Another library's classes of the same names: both link into one program.
class CString {
public:
    explicit CString(const char *);
    CString & MakeUpper();
    int GetLength() const;
};
CString::CString(const char *) {}
CString & CString::MakeUpper() { return *this; }
int CString::GetLength() const { return 0; }

int Fremde() { return CString("fremd").MakeUpper().GetLength(); }
