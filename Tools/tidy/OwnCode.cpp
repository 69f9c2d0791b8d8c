// A plugin of clang that shows the checks only what is declared outside of system headers. clang-tidy walks
// through all of Qt and the standard library for each source file otherwise, and keeps silent about what it
// finds there.
#include <clang/AST/ASTConsumer.h>
#include <clang/AST/ASTContext.h>
#include <clang/Basic/SourceManager.h>
#include <clang/Frontend/FrontendAction.h>
#include <clang/Frontend/FrontendPluginRegistry.h>

namespace {

class OwnCodeConsumer : public clang::ASTConsumer {
    void HandleTranslationUnit(clang::ASTContext& context) override
    {
        const clang::SourceManager& files = context.getSourceManager();
        std::vector<clang::Decl*> own;
        for (clang::Decl* declaration : context.getTranslationUnitDecl()->decls()) {
            const clang::SourceLocation place = files.getExpansionLoc(declaration->getLocation());
            if (place.isValid() && !files.isInSystemHeader(place))
                own.push_back(declaration);
        }
        context.setTraversalScope(own);
    }
};

class OwnCodeAction : public clang::PluginASTAction {
    std::unique_ptr<clang::ASTConsumer> CreateASTConsumer(clang::CompilerInstance& /*compiler*/,
                                                          llvm::StringRef /*file*/) override
    {
        return std::make_unique<OwnCodeConsumer>();
    }
    bool ParseArgs(const clang::CompilerInstance& /*compiler*/,
                   const std::vector<std::string>& /*arguments*/) override
    {
        return true;
    }
    // The checks are the main action, and read the scope when they begin.
    ActionType getActionType() override { return AddBeforeMainAction; }
};

const clang::FrontendPluginRegistry::Add<OwnCodeAction> registration("own-code",
                                                                     "Leaves system headers out.");

} // namespace
