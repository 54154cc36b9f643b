// A program with a version resource, for the output page's application block.
int main()
{
    return 0;
}
