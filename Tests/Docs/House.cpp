int House(const wchar_t* document);

int main() { return House(DOCUMENT); }
